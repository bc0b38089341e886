#include "interchange/import/source_page.h"

#include "interchange/svg_in/text_encoding.h"
#include "interchange/svg_in/transform_list.h"

#include <pugixml.hpp>

#include <optional>
#include <string>

namespace interchange {

SourcePage sourcePageOf(std::string_view svg, const DocumentFacts& facts) {
  const std::string text = toUtf8(svg);
  pugi::xml_document document;
  document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
  const pugi::xml_node root = document.document_element();
  const std::optional<ViewBox> box = parseViewBox(root.attribute("viewBox").value());

  ZnGeMatrix2d toViewport = ZnGeMatrix2d::scaling({facts.millimetresPerUnit, facts.millimetresPerUnit});
  if (box && facts.width > 0 && facts.height > 0)
    toViewport = fitViewBox(*box, facts.width, facts.height, root.attribute("preserveAspectRatio").value());
  return {ZnGeMatrix2d({0, facts.height}, {1, 0}, {0, -1}) * toViewport, facts.width, facts.height};
}

} // namespace interchange
