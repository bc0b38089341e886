// What a drawing holds after an SVG was imported, told as text in import_cases.txt.
#include "interchange/import/scene_import.h"

#include "interchange/svg_in/svg_reader.h"
#include "interchange_draw/scratch.h"
#include "support/host_drawing.h"
#include "support/told_cases.h"

#include "quorl/db/entity/text.h"

#include <fmt/format.h>

#include <cmath>

using namespace interchange;
using interchange_test::scratchPath;

namespace {

// A page of 200 x 100 mm with two user units to the millimetre.
std::string page(const std::string& content) {
  return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:e='urn:editor' width='200mm' height='100mm' "
         "viewBox='0 0 400 200'>" +
         content + "</svg>";
}

std::string number(double value) { return std::abs(value) < 1e-9 ? "0" : fmt::format("{:.6g}", value); }
std::string point(double x, double y) { return number(x) + "," + number(y); }

std::string traits(const ZnDbEntity& entity) {
  std::string text = fmt::format(" {} #{:08x} w{}", entity.layer().utf8(), entity.color().packed(),
                                 static_cast<int>(entity.lineWeight()));
  const ZnDbHolder<ZnDbLinetypeTableRecord> linetype(entity.linetypeId());
  if (linetype->numDashes() > 0) text += " " + linetype->name().utf8();
  for (int i = 0; i < linetype->numDashes(); ++i) text += "/" + number(linetype->dashLengthAt(i));
  if (entity.transparency().alpha() != 255) text += fmt::format(" alpha {}", entity.transparency().alpha());
  return text + (entity.visibility() == ZnDb::kVisible ? "" : " hidden");
}

std::string place(const ZnDbEntity& entity) {
  if (const auto* text = ZnDbText::cast(&entity)) {
    const ZnGeVector3d along = text->direction(), up = text->normal().crossProduct(along);
    return fmt::format(" '{}' {} h{} along {} up {} align {}", text->textString().utf8(),
                       point(text->position().x, text->position().y), number(text->height()),
                       point(along.x, along.y), point(up.x, up.y), static_cast<int>(text->horizontalAlign()));
  }
  ZnGeBoundBlock3d extents;
  EXPECT_EQ(entity.getGeomExtents(extents), Quorl::eOk);
  return " " + point(extents.min().x, extents.min().y) + ".." + point(extents.max().x, extents.max().y);
}

// Contents of pages, "||" between them, imported one after the other into one drawing: what comes of the
// last.
Lines imported(std::string input) {
  ZnDbDatabase drawing;
  ImportReport report;
  for (size_t bar = 0; bar != std::string::npos;) {
    bar = input.find(" || ");
    const SvgReadResult read = readSvg(page(input.substr(0, bar)), "drawing.svg");
    EXPECT_FALSE(read.error) << read.error->text();
    report = {};
    EXPECT_TRUE(importScene(read.scene, drawing, report));
    if (bar != std::string::npos) input = input.substr(bar + 4);
  }
  for (const ZnString& fault : drawing.audit(false)) ADD_FAILURE() << fault.utf8();
  EXPECT_EQ(drawing.insertionUnits(), 4);
  Lines lines;
  std::map<ZnDbObjectId, std::string> names;
  for (const ImportedEntity& imported : report.entities) {
    const ZnDbHolder<ZnDbEntity> entity(imported.id);
    names[imported.id] = imported.source.id;
    EXPECT_EQ(imported.hiddenReason.empty(), entity->visibility() == ZnDb::kVisible);
    lines.push_back(imported.source.id + " " + imported.id.objectClass()->name().utf8().substr(4) +
                    traits(*entity) + place(*entity));
    if (imported.block != drawing.modelSpaceId())
      lines.back() += " in " + ZnDbHolder<ZnDbBlockTableRecord>(imported.block)->name().utf8();
  }
  const ZnDbHolder<ZnDbSymbolTable> layers(drawing.layerTableId());
  for (const ZnDbObjectId id : layers->recordIds()) {
    const ZnDbHolder<ZnDbLayerTableRecord> layer(id);
    lines.push_back(fmt::format("layer {} #{:08x}{}", layer->name().utf8(), layer->color().packed(),
                                layer->isOff() ? " off" : ""));
  }
  for (const auto& found : report.circles)
    lines.push_back(fmt::format("circle of {} {} r{}", names[found.entity],
                                point(found.circle.center.x, found.circle.center.y),
                                number(found.circle.radius)));
  return lines;
}

TEST(SceneImport, MakesOfPagesWhatIsTold) {
  runToldCases("interchange_draw/import_cases.txt", 8,
               [](const std::string&, const std::string& input, const Lines&) { return imported(input); });
}

TEST(SceneImport, FilesAreReadOrLeaveTheDrawingAsItWas) {
  ZnDbDatabase drawing;
  ImportReport report;
  const std::string path = scratchPath("drawing.svg");
  std::ofstream(path) << page("<circle id='c' cx='10' cy='30' r='4' stroke='#000'/><image id='i'/>");
  Quorl::Failure error;
  ASSERT_TRUE(importSvgFile(path, {}, drawing, report, error)) << error.text();
  EXPECT_EQ(report.page.width, 200);
  EXPECT_EQ(report.page.height, 100);
  const ZnGePoint2d corner = report.page.userToPage * ZnGePoint2d{400, 200};
  EXPECT_NEAR(corner.x, 200, 1e-9);
  EXPECT_NEAR(corner.y, 0, 1e-9);
  ASSERT_EQ(report.skipped.size(), 1u);
  EXPECT_EQ(report.skipped[0].what, "<image id=\"i\">");

  std::ofstream(path) << "<svg><g></svg>";
  const std::size_t before = drawing.objectCount();
  for (const std::string& bad : {path, scratchPath("missing.svg"), scratchPath("")}) {
    EXPECT_FALSE(importSvgFile(bad, {}, drawing, report, error));
    EXPECT_EQ(error.file, bad);
    EXPECT_EQ(drawing.objectCount(), before);
  }
}

} // namespace
