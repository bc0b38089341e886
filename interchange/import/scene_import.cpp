#include "interchange/import/scene_import.h"

#include "interchange/import/shape_entities.h"
#include "interchange/import/trait_import.h"
#include "interchange/svg_in/placed_circles.h"
#include "interchange/svg_in/svg_reader.h"
#include "interchange/tolerance.h"

#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"
#include "quorl/file/disk_file.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <system_error>

namespace interchange {

namespace {

constexpr int kMillimetres = 4;

std::string describe(const Source& source) {
  return "<" + source.element + (source.id.empty() ? "" : " id=\"" + source.id + "\"") + ">";
}

class Importer {
public:
  Importer(const Scene& scene, ZnDbDatabase& database, ImportReport& report)
      : scene_(scene)
      , database_(database)
      , report_(report)
      , traits_(scene, database) {}

  bool run() {
    if (!makeBlocks()) return false;
    for (std::size_t i = 0; i < scene_.blocks.size(); ++i) {
      for (const Element& element : scene_.blocks[i].elements) append(element, blocks_[i]);
    }
    std::vector<ZnDbObjectId> onPage;
    for (const Element& element : scene_.elements) {
      if (!isBackdrop(element)) {
        onPage.push_back(append(element, database_.currentSpaceId()));
        continue;
      }
      Element hidden = element;
      hidden.visible = false;
      hidden.hiddenReason = "the white backdrop of the page";
      onPage.push_back(append(hidden, database_.currentSpaceId()));
    }
    for (const PlacedCircle& placed : placedCircles(scene_))
      report_.circles.push_back({onPage[placed.element], placed.circle, placed.visible});
    return true;
  }

private:
  // All records before any content: a block may refer to one that comes later.
  bool makeBlocks() {
    ZnDbHolder<ZnDbBlockTable> table;
    if (table.openForWrite(database_.blockTableId()) != Quorl::eOk) return false;
    std::set<std::string> taken;
    for (const Block& block : scene_.blocks) {
      ZnString name = freeName(block.name, taken);
      while (table->has(name)) name = freeName(block.name, taken);
      auto* record = new ZnDbBlockTableRecord;
      record->setName(name);
      ZnDbObjectId id;
      if (table->add(id, record) != Quorl::eOk) {
        delete record;
        return false;
      }
      record->close();
      blocks_.push_back(id);
    }
    return true;
  }

  // Exporters lay a white area without a stroke under the whole page; its outline is no line of the drawing.
  bool isBackdrop(const Element& element) const {
    const auto* area = std::get_if<Polyline>(&element.shape);
    const DocumentFacts& page = scene_.document;
    if (!area || !area->closed || element.style.stroked || element.style.color != Color{255, 255, 255})
      return false;
    const auto isNear = [](double a, double b) { return std::abs(a - b) <= tolerance::kRounding; };
    const auto isCorner = [&](const Vertex& vertex) {
      return (isNear(vertex.point.x, 0) || isNear(vertex.point.x, page.width)) &&
             (isNear(vertex.point.y, 0) || isNear(vertex.point.y, page.height));
    };
    return page.width > 0 && area->vertices.size() == 4 &&
           std::all_of(area->vertices.begin(), area->vertices.end(), isCorner);
  }

  // The new entity's id, null for what the drawing cannot hold.
  ZnDbObjectId append(const Element& element, ZnDbObjectId blockId) {
    std::unique_ptr<ZnDbEntity> entity = entityOf(element.shape, blocks_);
    ZnDbObjectId id;
    ZnDbHolder<ZnDbBlockTableRecord> block;
    if (!entity) {
      skip(element, "a shape without extent or beyond the limits of a drawing");
      return id;
    }
    if (block.openForWrite(blockId) != Quorl::eOk ||
        block->appendZnDbEntity(id, entity.get()) != Quorl::eOk) {
      skip(element, "a reference that would contain itself");
      return {};
    }
    ZnDbEntity* appended = entity.release();
    traits_.apply(element, *appended);
    appended->close();
    report_.entities.push_back({id, blockId, element.source, element.hiddenReason});
    return id;
  }

  void skip(const Element& element, const char* why) {
    report_.skipped.push_back({describe(element.source), element.source.line, why});
  }

  const Scene& scene_;
  ZnDbDatabase& database_;
  ImportReport& report_;
  TraitImport traits_;
  std::vector<ZnDbObjectId> blocks_;
};

} // namespace

bool importScene(const Scene& scene, ZnDbDatabase& database, ImportReport& report) {
  report = ImportReport();
  report.document = scene.document;
  report.skipped = scene.skipped;
  report.problems = scene.problems;
  if (database.currentSpaceId().isNull() || database.layerTableId().isNull()) return false;
  database.setInsertionUnits(kMillimetres);
  return Importer(scene, database, report).run();
}

bool importSvgFile(const std::string& path, const ReadOptions& options, ZnDbDatabase& database,
                   ImportReport& report, Quorl::Failure& error) {
  std::string text, fault;
  if (!zndbReadFile(path, text, fault)) return error.set(path, 0, "can't be read: " + fault, "an SVG file");
  const SvgReadResult read = readSvg(text, path, options);
  if (read.error) {
    error = *read.error;
    return false;
  }
  if (!importScene(read.scene, database, report)) {
    return error.set(path, 0, "the drawing has no space to import into", "a drawing with its tables");
  }
  report.page = sourcePageOf(text, report.document);
  return true;
}

} // namespace interchange
