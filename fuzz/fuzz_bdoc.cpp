// The binary format. Damage goes into what the sections hold, whose checksums are made anew: random bytes
// hardly ever get past those.
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "fuzz/drawing_trial.h"
#include "quorl/file/bdoc_container.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using Sections = std::vector<std::pair<ZnSectionType, std::string>>;

bool unpack(std::string_view bytes, Sections& sections) {
  const ZnStringSource source(bytes);
  ZnBdocContainerReader reader(source);
  ZnFileError error;
  if (!reader.open(error)) return false;
  for (const auto& section : reader.sections()) {
    constexpr std::uint64_t kMost = 1 << 20;
    std::string raw;
    if (section.rawSize > kMost || !reader.read(section, raw, error)) return false;
    sections.emplace_back(section.type, raw);
  }
  return !sections.empty();
}

std::string pack(const Sections& sections) {
  std::string bytes;
  ZnStringSink sink(bytes);
  ZnBdocContainerWriter writer(sink);
  writer.begin();
  for (const auto& [type, raw] : sections) writer.add(type, raw);
  writer.finish();
  return bytes;
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  std::minstd_rand chance(seed);
  Sections sections;
  constexpr unsigned kPlainDamage = 8; // one time in so many the container itself is damaged
  if (chance() % kPlainDamage == 0 || !unpack({reinterpret_cast<const char*>(data), size}, sections))
    return LLVMFuzzerMutate(data, size, most);
  std::string& raw = sections[chance() % sections.size()].second;
  const std::size_t before = raw.size();
  raw.resize(before + 64);
  raw.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(raw.data()), before, raw.size()));
  const std::string bytes = pack(sections);
  if (bytes.size() > most) return LLVMFuzzerMutate(data, size, most);
  std::memcpy(data, bytes.data(), bytes.size());
  return bytes.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tryDrawing({reinterpret_cast<const char*>(data), size});
  return 0;
}
