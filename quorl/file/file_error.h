// What went wrong with a drawing file: where, what was found and what was expected.
#pragma once

#include <cstdint>
#include <string>

#include "quorl/base/error_status.h"
#include "quorl/base/handle.h"

struct ZnFileError {
  std::string file;       // empty for a drawing in memory
  std::uint64_t line = 0; // of a text, counted from 1; 0 where no line is at fault
  std::string place;      // within it: "byte 123", "object 2A (ZnDbLine)"
  std::string what;
  std::string expected; // empty where the fault says it all
  Quorl::ErrorStatus status = Quorl::eOk;
  ZnDbHandle object; // of the object at fault, where it was found out after reading

  // "file:line: place: what, expected what", leaving out what is not known; empty without an error.
  std::string text() const;

  // Fills in the error and gives false, so that a reader can return it at once. File and line stay.
  bool fail(Quorl::ErrorStatus why, std::string where, std::string found, std::string wanted = {});
};

namespace Quorl {
// "object 2A (ZnDbLine)", the place of faults of one object.
std::string objectPlace(ZnDbHandle handle, const std::string& className);
} // namespace Quorl
