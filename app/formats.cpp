#include "app/formats.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <vector>

namespace app {

namespace {

struct FormatRow {
  const char* ending;
  Format format;
  bool isReadable, isOwn, isPicture;
};

constexpr FormatRow kFormats[] = {
    {"bdoc", Format::kBdoc, true, true, false}, {"tdoc", Format::kTdoc, true, true, false},
    {"svg", Format::kSvg, true, false, true},   {"pdf", Format::kPdf, false, false, true},
    {"png", Format::kPng, false, false, true},
};

const FormatRow& rowOf(Format format) {
  return *std::find_if(std::begin(kFormats), std::end(kFormats),
                       [format](const FormatRow& row) { return row.format == format; });
}

std::vector<std::string> endings(FormatTest which) {
  std::vector<std::string> found;
  for (const FormatRow& row : kFormats)
    if (which(row.format)) found.push_back(row.ending);
  return found;
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

bool isAny(Format) { return true; }
bool isReadable(Format format) { return rowOf(format).isReadable; }
bool isOwn(Format format) { return rowOf(format).isOwn; }
bool isPicture(Format format) { return rowOf(format).isPicture; }

std::string listOfEndings(FormatTest which) {
  std::string list;
  for (const std::string& ending : endings(which)) list += (list.empty() ? "" : ", ") + ending;
  return list;
}

std::string namesOfEndings(FormatTest which) {
  const std::vector<std::string> found = endings(which);
  std::string names;
  for (size_t i = 0; i < found.size(); ++i)
    names += (i == 0 ? "." : i + 1 == found.size() ? " or ." : ", .") + found[i];
  return names;
}

} // namespace app
