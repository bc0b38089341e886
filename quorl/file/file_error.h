// What went wrong with a drawing file: where, what was found and what was expected.
#pragma once

#include <string>

#include "quorl/base/error_status.h"
#include "quorl/base/handle.h"

struct ZnFileError {
  std::string file;  // empty for a drawing in memory
  std::string place; // "byte 123", "line 45", "section objects"
  std::string what;
  std::string expected; // empty where the fault says it all
  Quorl::ErrorStatus status = Quorl::eOk;

  // One line for the user, empty without an error.
  std::string text() const;

  // Fills in the error and gives false, so that a reader can return it at once. The file's name stays.
  bool fail(Quorl::ErrorStatus why, std::string where, std::string found, std::string wanted = {});
};

namespace Quorl {
// "object 2A (ZnDbLine)", the place of faults of one object.
std::string objectPlace(ZnDbHandle handle, const std::string& className);
} // namespace Quorl
