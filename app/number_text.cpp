#include "app/number_text.h"

#include <fmt/format.h>

namespace app {

std::string numberText(double value) {
  std::string text = fmt::format("{:.6f}", value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string pointText(const ZnGePoint3d& point) {
  std::string text = numberText(point.x) + "," + numberText(point.y);
  const std::string z = numberText(point.z);
  if (z != "0") text += "," + z;
  return text;
}

} // namespace app
