// Looks a drawing over: every object's own faults, and whether owners and what they own know of each other.
#pragma once

#include <string>
#include <vector>

#include "quorl/base/handle.h"

class ZnDbDatabase;

struct ZnAuditFinding {
  ZnDbHandle object;
  std::string className, reason;

  std::string text() const; // "object 2A (ZnDbLine): its layer is missing"
};

// In order of handles. With fix each is mended where that can be: a bad value becomes the usual one, an entry
// that names nothing goes, an object that hangs in the air goes back to its owner or is erased. Mending is an
// undoable change; a second look tells what is left.
std::vector<ZnAuditFinding> zndbAuditDrawing(ZnDbDatabase& database, bool fix);
