#include "quorl/db/table/linetype_file.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <string_view>

using Quorl::ErrorStatus;

namespace {

constexpr size_t kMaxDashes = 24;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The text up to the separator, which is taken away with it; the rest when there is none.
std::string_view nextField(std::string_view& rest, char separator) {
  const size_t at = rest.find(separator);
  const std::string_view field = trimmed(rest.substr(0, at));
  rest = at == std::string_view::npos ? std::string_view() : trimmed(rest.substr(at + 1));
  return field;
}

// Null when the pattern is good, else what is wrong with it.
const char* faultOf(const std::vector<double>& dashes) {
  if (dashes.size() < 2) return "a pattern needs a dash or dot and a gap";
  if (dashes.size() > kMaxDashes) return "too many dashes";
  if (dashes.front() < 0.0) return "a pattern begins with a dash or a dot";
  for (size_t i = 0; i < dashes.size(); ++i) {
    const double next = dashes[(i + 1) % dashes.size()];
    if (dashes[i] < 0.0 && next < 0.0) return "two gaps follow each other";
    if (dashes[i] >= 0.0 && next >= 0.0 && i + 1 < dashes.size()) return "no gap between two dashes";
  }
  return nullptr;
}

// Null when the line is good, else what is wrong with it.
const char* parseLine(std::string_view line, ZnDbLinetypeDescription& spec) {
  std::string_view rest = line;
  const std::string_view name = nextField(rest, '|');
  if (name.empty()) return "no name";
  if (rest.empty()) return "no description and dashes after the name";
  spec.name = ZnString::fromUtf8(name);
  if (rest.find('|') == std::string_view::npos) return "no dashes after the description";
  spec.description = ZnString::fromUtf8(nextField(rest, '|'));
  while (!rest.empty()) {
    const std::string_view word = rest.substr(0, rest.find_first_of(" \t"));
    rest = trimmed(rest.substr(word.size()));
    if (word == "fit" && rest.empty()) {
      spec.scaledToFit = true;
      break;
    }
    double length = 0.0;
    const std::from_chars_result read = std::from_chars(word.data(), word.data() + word.size(), length);
    if (read.ec != std::errc() || read.ptr != word.data() + word.size() || !std::isfinite(length))
      return "a dash is no number";
    spec.dashes.push_back(length);
  }
  return faultOf(spec.dashes);
}

ZnString message(const std::string& path, int line, const char* fault) {
  return ZnString::fromUtf8(path + ":" + std::to_string(line) + ": " + fault);
}

} // namespace

ErrorStatus zndbReadLinetypeFile(const std::string& path, const ZnString& wanted,
                                 std::vector<ZnDbLinetypeDescription>& linetypes, ZnString& error) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    error = ZnString::fromUtf8(path + ": can't be read");
    return Quorl::eNotFound;
  }
  std::vector<ZnDbLinetypeDescription> found;
  std::string text;
  for (int number = 1; std::getline(file, text); ++number) {
    const std::string_view line = trimmed(text);
    if (line.empty() || line.front() == '#') continue;
    ZnDbLinetypeDescription spec;
    if (const char* fault = parseLine(line, spec)) {
      error = message(path, number, fault);
      return Quorl::eInvalidInput;
    }
    for (const ZnDbLinetypeDescription& earlier : found)
      if (earlier.name.equalsNoCase(spec.name)) {
        error = message(path, number, "a linetype of that name stands further up");
        return Quorl::eInvalidInput;
      }
    found.push_back(std::move(spec));
  }
  const bool all = wanted == L"*";
  size_t taken = 0;
  for (ZnDbLinetypeDescription& spec : found) {
    if (!all && !spec.name.equalsNoCase(wanted)) continue;
    linetypes.push_back(std::move(spec));
    ++taken;
  }
  if (taken || all) return Quorl::eOk;
  error = ZnString::fromUtf8(path + ": no linetype \"" + wanted.utf8() + "\"");
  return Quorl::eKeyNotFound;
}
