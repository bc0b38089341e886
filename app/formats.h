// The file formats that the program knows, told by the ending of a file's name.
#pragma once

#include <optional>
#include <string>

namespace app {

enum class Format { kBdoc, kTdoc, kSvg, kPdf, kPng };

// None for another ending; the case of letters makes no difference.
std::optional<Format> formatOf(const std::string& path);
// Drawings that can be read, not just written.
bool isReadable(Format format);
// "bdoc, tdoc, svg, pdf, png", for messages.
std::string allEndings();
std::string readableEndings();

} // namespace app
