// Opens a damaged drawing for what is whole in it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/file/file_error.h"

class ZnByteSource;

struct ZnRecovery {
  // Null, with the error, where nothing could be saved: the file can't be opened, or what tells its parts
  // apart is lost.
  std::unique_ptr<ZnDbDatabase> database;
  ZnFileError error;
  // What was lost, moved or made anew, each with its place: section and byte, line, handle. Empty for a file
  // that is whole.
  std::vector<ZnFileError> findings;
};

// Records that are whole are kept as they are. One that is not is left out, and references to it become null.
// What no drawing can be without is made anew; what has lost its owner goes where its class belongs. The
// drawing that comes of it has passed the audit. The format is told by content, as far as there is some.
ZnRecovery zndbRecoverDrawing(const std::string& path);
ZnRecovery zndbRecoverDrawing(const ZnByteSource& source);
