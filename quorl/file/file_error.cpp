#include "quorl/file/file_error.h"

#include <utility>

#include "quorl/base/string.h"

std::string ZnFileError::text() const {
  if (status == Quorl::eOk) return {};
  std::string text = file;
  if (line > 0) text += (file.empty() ? "line " : ":") + std::to_string(line);
  if (!text.empty()) text += ": ";
  if (!place.empty()) text += place + ": ";
  text += what.empty() ? Quorl::errorStatusText(status) : what;
  if (!expected.empty()) text += ", expected " + expected;
  return text;
}

bool ZnFileError::fail(Quorl::ErrorStatus why, std::string where, std::string found, std::string wanted) {
  status = why;
  place = std::move(where);
  what = std::move(found);
  expected = std::move(wanted);
  return false;
}

std::string Quorl::objectPlace(ZnDbHandle handle, const std::string& className) {
  return "object " + handleText(handle).utf8() + " (" + className + ")";
}
