// The text format, with the checksums of its sections made anew after each change.
#include <cstdint>
#include <cstring>
#include <random>
#include <xxhash.h>

#include "fuzz/drawing_trial.h"
#include "quorl/file/tdoc_items.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

// A section begins behind the line of its name and ends before the code of its checksum.
std::string sealed(const std::string& text) {
  constexpr std::string_view kSection = "1000\n", kChecksum = "\n1001\n";
  std::string result;
  size_t from = 0;
  for (size_t at = text.find(kChecksum); at != std::string::npos; at = text.find(kChecksum, from)) {
    const size_t name = text.rfind(kSection, at), begin = text.find('\n', name + kSection.size()) + 1;
    const size_t value = at + kChecksum.size(), end = std::min(text.find('\n', value), text.size());
    if (name == std::string::npos || begin == 0 || begin > at + 1) break;
    result.append(text, from, value - from);
    Quorl::appendHex(result, XXH64(text.data() + begin, at + 1 - begin, 0));
    from = end;
  }
  return result.append(text, from);
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  size = LLVMFuzzerMutate(data, size, most);
  std::minstd_rand chance(seed);
  constexpr unsigned kUnsealed = 8;
  if (chance() % kUnsealed == 0) return size;
  const std::string text = sealed({reinterpret_cast<const char*>(data), size});
  if (text.size() > most) return size;
  std::memcpy(data, text.data(), text.size());
  return text.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tryDrawing({reinterpret_cast<const char*>(data), size});
  return 0;
}
