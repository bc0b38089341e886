// Linetype files: plain tables, one linetype a line.
#pragma once

#include <string>
#include <vector>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"

struct ZnDbLinetypeDescription {
  ZnString name;
  ZnString description;
  std::vector<double> dashes; // positive dashes, negative gaps, 0 dots, in drawing units
  bool scaledToFit = false;
};

// Appends the linetype of that name (without regard to case), or all for "*". A line is
//   NAME | description | dashes separated by blanks [fit]
// in UTF-8; a line that begins with "#" and an empty one count for nothing. eNotFound for a file that can't
// be read, eInvalidInput for a line that is wrong (error names file and line; nothing is appended),
// eKeyNotFound for a name that the file has not. A pattern begins with a dash or a dot, dashes or dots take
// turns with gaps, and there are at most 24 of them.
Quorl::ErrorStatus zndbReadLinetypeFile(const std::string& path, const ZnString& wanted,
                                        std::vector<ZnDbLinetypeDescription>& linetypes, ZnString& error);
