#include "interchange/svg_in/svg_reader.h"

#include "interchange/svg_in/document_walker.h"
#include "interchange/svg_in/line_index.h"
#include "interchange/svg_in/text_encoding.h"

#include <pugixml.hpp>

#include <iterator>
#include <utility>

namespace interchange {

namespace {

// The parser's own words for what it met, with what we would have read there.
std::string expectedAt(const pugi::xml_parse_result& result) {
  switch (result.status) {
  case pugi::status_end_element_mismatch:
    return "the end tag of the element that is open here";
  case pugi::status_bad_attribute:
    return "attributes as name=\"value\", each once";
  case pugi::status_no_document_element:
    return "an <svg> element";
  case pugi::status_bad_start_element:
    return "an element name and its attributes, closed with >";
  default:
    return "well-formed XML to the end of the file";
  }
}

std::string commentsBefore(const pugi::xml_node& root) {
  std::string text;
  for (pugi::xml_node node = root.previous_sibling(); node; node = node.previous_sibling()) {
    if (node.type() == pugi::node_comment) text += node.value();
  }
  return text;
}

// The tree of a document takes many times the memory of its text, so what will be refused is better not read.
bool hasTooManyTags(std::string_view text, std::size_t most) {
  std::size_t tags = 0;
  for (size_t at = text.find('<'); at != text.npos; at = text.find('<', at + 1)) {
    const char next = at + 1 < text.size() ? text[at + 1] : '/';
    tags += next != '/' && next != '!' && next != '?';
  }
  return tags > most;
}

} // namespace

SvgReadResult readSvg(std::string_view text, const std::string& fileName, const ReadOptions& options) {
  SvgReadResult result;
  std::string buffer = toUtf8(text);
  const std::size_t mostTags = 2 * options.largestExpansion; // half of them may be groups, styles and notes
  if (hasTooManyTags(buffer, mostTags)) {
    result.error.emplace().set(fileName, 0, "the document has too many elements",
                               std::to_string(mostTags) + " at most");
    return result;
  }
  const LineIndex lines(buffer);
  pugi::xml_document document;
  constexpr unsigned kParse = pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_comments;
  const pugi::xml_parse_result parsed =
      document.load_buffer_inplace(buffer.data(), buffer.size(), kParse, pugi::encoding_utf8);
  if (!parsed) {
    result.error.emplace().set(fileName, lines.lineOf(parsed.offset), parsed.description(),
                               expectedAt(parsed));
    return result;
  }
  DocumentWalker walker(lines, fileName, options, result.scene);
  const pugi::xml_node root = document.document_element();
  result.error = walker.walk(root, commentsBefore(root));
  if (result.error) result.scene = {};
  return result;
}

} // namespace interchange
