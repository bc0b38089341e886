#include "interchange/draw/annotated_svg.h"

#include "interchange/draw/file_output.h"
#include "interchange/draw/picture_draw.h"
#include "interchange/draw/svg_insertion.h"
#include "interchange/draw/svg_path_target.h"
#include "interchange/svg_in/read_options.h"
#include "interchange/svg_in/text_encoding.h"

#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"
#include "quorl/file/disk_file.h"

#include <pugixml.hpp>

#include <optional>
#include <utility>

namespace interchange {

namespace {

constexpr double kChordOnPage = 0.005;

// UTF-16 by its mark; every other encoding of drawings spells our letters as we do.
bool isWide(std::string_view bytes) { return bytes.starts_with("\xff\xfe") || bytes.starts_with("\xfe\xff"); }

// The declaration must not name an encoding that the text no longer has.
std::string withoutEncoding(std::string text) {
  const std::size_t end = text.starts_with("<?xml") ? text.find("?>") : std::string::npos;
  const std::size_t name = text.find("encoding");
  if (end == std::string::npos || name == std::string::npos || name > end) return text;
  const std::size_t open = text.find_first_of("\"'", name);
  const std::size_t close = open < end ? text.find(text[open], open + 1) : std::string::npos;
  if (close == std::string::npos || close > end) return text;
  text.erase(name, close + 1 - name);
  return text;
}

// Takes an annotation that an earlier run has put there out of the text: it is replaced, not doubled.
void removeEarlier(std::string& text, const std::string& groupName) {
  const std::string end = "</" + groupName + ">\n";
  const std::size_t from = text.find("<" + groupName + " id=\"" + kAnnotationId + "\"");
  const std::size_t to = from == std::string::npos ? from : text.find(end, from);
  if (to == std::string::npos || text.find("<" + groupName, from + 1) < to) return; // not as we write it
  text.erase(from, to + end.size() - from);
}

// Somebody else's element may have the id.
std::string freeId(const pugi::xml_document& document) {
  std::string id = kAnnotationId;
  const auto isTaken = [&] {
    return !document
                .find_node([&id](const pugi::xml_node& node) { return id == node.attribute("id").value(); })
                .empty();
  };
  for (int number = 2; isTaken(); ++number) id = kAnnotationId + ("-" + std::to_string(number));
  return id;
}

bool reachesOutside(const std::optional<Extent>& extent, const SourcePage& page) {
  if (!extent || !(page.width > 0) || !(page.height > 0)) return false;
  return extent->min.x < 0 || extent->min.y < 0 || extent->max.x > page.width || extent->max.y > page.height;
}

} // namespace

bool annotateSvg(std::string_view source, const SourcePage& page, const ZnDbDatabase& database,
                 const std::vector<ZnDbObjectId>& annotation, const PictureOptions& options,
                 std::string& annotated, Quorl::Failure& error) {
  std::string text = isWide(source) ? withoutEncoding(toUtf8(source)) : std::string(source);
  if (const std::optional<RootTag> tag = findRootEnd(text)) removeEarlier(text, tag->prefix + "g");
  const std::string readable = toUtf8(text);
  pugi::xml_document document;
  const pugi::xml_parse_result parsed =
      document.load_buffer(readable.data(), readable.size(), pugi::parse_default, pugi::encoding_utf8);
  if (!parsed) {
    return error.set("", 0, std::string("the source is no XML: ") + parsed.description(), "an SVG document");
  }
  const std::optional<RootTag> root = findRootEnd(text);
  if (!root || !std::string_view(document.document_element().name()).ends_with("svg")) {
    return error.set("", 0, "the source has no svg element", "an SVG document");
  }
  if (page.userToPage.isSingular()) {
    return error.set("", 0, "the source's page has no area", "the page that the source was imported with");
  }

  TraitResolver resolver(database, options.background);
  SvgPathTarget target(page.userToPage.inverse(), page.userToPage.meanScale(), root->prefix);
  PictureDraw draw(resolver, target, kChordOnPage, options.lineWeightFactor);
  for (const ZnDbObjectId id : annotation) {
    const ZnDbHolder<ZnDbEntity> entity(id);
    if (entity.isOpen()) draw.drawEntity(*entity);
  }
  const std::string name = root->prefix + "g";
  std::string group = "<" + name + " id=\"" + freeId(document) + "\"";
  if (reachesOutside(target.extent(), page)) group += " style=\"overflow:visible\"";
  group += ">\n" + target.elements() + "</" + name + ">\n";
  if (root->isEmpty) {
    text.replace(root->end, 2, ">" + group + "</" + root->prefix + "svg>");
  } else {
    text.insert(root->end, group);
  }
  annotated = std::move(text);
  return true;
}

bool writeAnnotatedSvg(const std::string& sourcePath, const SourcePage& page, const ZnDbDatabase& database,
                       const std::vector<ZnDbObjectId>& annotation, const std::string& path,
                       const PictureOptions& options, Quorl::Failure& error) {
  std::string source, annotated, fault;
  if (!zndbReadFile(sourcePath, source, fault))
    return error.set(sourcePath, 0, "can't be read: " + fault, "an SVG document");
  if (!annotateSvg(source, page, database, annotation, options, annotated, error)) {
    error.file = sourcePath;
    return false;
  }
  return writeWhole(path, annotated, error);
}

} // namespace interchange
