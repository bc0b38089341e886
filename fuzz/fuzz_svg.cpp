// SVG documents.
#include <cstdint>
#include <cstdlib>

#include "interchange/svg_in/svg_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto read = interchange::readSvg({reinterpret_cast<const char*>(data), size}, "fuzz.svg");
  // A refusal says why and leaves nothing.
  if (read.error && (read.error->what.empty() || !read.scene.elements.empty())) std::abort();
  return 0;
}
