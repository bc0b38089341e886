// Finds the place in the text of an SVG document where its root element ends.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace interchange {

struct RootTag {
  std::string prefix;   // of the root's name with its colon, or empty
  std::size_t end = 0;  // offset of the root's end tag, or of the "/>" of an empty root
  bool isEmpty = false; // the root is one tag, "<svg .../>"
};

// Goes by the marks of XML alone: comments, sections, instructions, declarations, tags and quotes. The text
// must be well-formed; nothing when no root element is closed.
std::optional<RootTag> findRootEnd(std::string_view text);

} // namespace interchange
