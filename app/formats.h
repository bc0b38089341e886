// The file formats that the program knows, told by the ending of a file's name: one table, from which help
// and messages are made as well.
#pragma once

#include <optional>
#include <string>

namespace app {

enum class Format { kBdoc, kTdoc, kSvg, kPdf, kPng };

// None for another ending; the case of letters makes no difference.
std::optional<Format> formatOf(const std::string& path);

using FormatTest = bool (*)(Format);
bool isAny(Format format);      // all can be written
bool isReadable(Format format); // as a drawing
bool isOwn(Format format);      // holds all that a drawing has
bool isPicture(Format format);

// "bdoc, tdoc, svg", for messages.
std::string listOfEndings(FormatTest which);
// ".bdoc, .tdoc or .svg", for sentences.
std::string namesOfEndings(FormatTest which);

} // namespace app
