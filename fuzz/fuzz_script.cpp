// Scripts of drawing commands, as far as their words.
#include <cstdint>
#include <cstdlib>

#include "app/script/script_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<app::ScriptLine> lines;
  app::Failure failure;
  const bool read =
      app::parseScript({reinterpret_cast<const char*>(data), size}, "fuzz.quorl", lines, failure);
  // A refusal says where; a name that was given is one that can be asked for.
  if (read != failure.what.empty() || (!read && failure.line == 0)) std::abort();
  for (const app::ScriptLine& line : lines)
    if (!line.name.empty() && !app::isScriptName(line.name)) std::abort();
  return 0;
}
