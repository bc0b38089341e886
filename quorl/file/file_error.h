// What went wrong with a drawing file, for a person and as a status.
#pragma once

#include "quorl/base/error_status.h"
#include "quorl/base/failure.h"
#include "quorl/base/handle.h"

struct ZnFileError : Quorl::Failure {
  Quorl::ErrorStatus status = Quorl::eOk;
  ZnDbHandle object; // of the object at fault, where it was found out after reading

  // Fills in the error and gives false, so that a reader can return it at once. File and line stay. A fault
  // without words of its own is told by its status.
  bool fail(Quorl::ErrorStatus why, std::string where, std::string found, std::string wanted = {});
};

namespace Quorl {
// "object 2A (ZnDbLine)", the place of faults of one object.
std::string objectPlace(ZnDbHandle handle, const std::string& className);
} // namespace Quorl
