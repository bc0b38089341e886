#include "quorl/file/file_error.h"

#include <utility>

#include "quorl/base/string.h"

bool ZnFileError::fail(Quorl::ErrorStatus why, std::string where, std::string found, std::string wanted) {
  status = why;
  place = std::move(where);
  what = found.empty() ? Quorl::errorStatusText(why) : std::move(found);
  expected = std::move(wanted);
  return false;
}

std::string Quorl::objectPlace(ZnDbHandle handle, const std::string& className) {
  return "object " + handleText(handle).utf8() + " (" + className + ")";
}
