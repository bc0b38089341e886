#include "app/formats.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace app {

namespace {

struct FormatRow {
  const char* ending;
  Format format;
  bool isReadable;
};

constexpr FormatRow kFormats[] = {
    {"bdoc", Format::kBdoc, true}, {"tdoc", Format::kTdoc, true}, {"svg", Format::kSvg, true},
    {"pdf", Format::kPdf, false},  {"png", Format::kPng, false},
};

std::string listed(bool readableOnly) {
  std::string list;
  for (const FormatRow& row : kFormats) {
    if (readableOnly && !row.isReadable) continue;
    if (!list.empty()) list += ", ";
    list += row.ending;
  }
  return list;
}

} // namespace

std::optional<Format> formatOf(const std::string& path) {
  const std::filesystem::path file(path);
  std::string ending = file.extension().string();
  // A name that is nothing but an ending, such as ".png".
  if (ending.empty()) ending = file.filename().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const FormatRow& row : kFormats)
    if (ending == std::string(".") + row.ending) return row.format;
  return std::nullopt;
}

bool isReadable(Format format) {
  for (const FormatRow& row : kFormats)
    if (row.format == format) return row.isReadable;
  return false;
}

std::string allEndings() { return listed(false); }
std::string readableEndings() { return listed(true); }

} // namespace app
