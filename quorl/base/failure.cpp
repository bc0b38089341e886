#include "quorl/base/failure.h"

#include <utility>

namespace Quorl {

std::string Failure::text() const {
  if (what.empty()) return {};
  std::string text = file;
  if (line > 0) text += (file.empty() ? "line " : ":") + std::to_string(line);
  if (!text.empty()) text += ": ";
  if (!place.empty()) text += place + ": ";
  text += what;
  if (!expected.empty()) text += ", expected " + expected;
  return text;
}

bool Failure::set(std::string inFile, std::uint64_t atLine, std::string found, std::string wanted) {
  file = std::move(inFile);
  line = atLine;
  what = std::move(found);
  expected = std::move(wanted);
  return false;
}

} // namespace Quorl
