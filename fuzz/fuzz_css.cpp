// Style sheets of SVG documents, and what they say of an element.
#include <cstdint>

#include "interchange/svg_in/style_sheet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  interchange::StyleSheet sheet;
  sheet.add(text);
  sheet.add(text); // a second style element
  size_t letters = 0;
  sheet.forEach("circle", "a b", "c", [&](const auto& declaration) { letters += declaration.value.size(); });
  return letters > 0 && sheet.empty() ? -1 : 0;
}
