// What a drawing holds after an SVG was imported, in millimetres against the file.
#include "interchange/import/scene_import.h"

#include "interchange/svg_in/svg_reader.h"
#include "interchange_draw/small_drawing.h"

#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/table/linetype_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

using namespace interchange;
using interchange_test::scratchPath;

namespace {

constexpr double kNear = 1e-9;

// A page of 200 x 100 mm with two user units to the millimetre.
std::string page(const std::string& content) {
  return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:e='urn:editor' width='200mm' height='100mm' "
         "viewBox='0 0 400 200'>" +
         content + "</svg>";
}

class SceneImportTest : public testing::Test {
protected:
  void import(const std::string& content) {
    const SvgReadResult read = readSvg(page(content), "drawing.svg");
    ASSERT_FALSE(read.error) << read.error->text();
    ASSERT_TRUE(importScene(read.scene, database_, report_));
    for (const ZnString& fault : database_.audit(false)) ADD_FAILURE() << fault.utf8();
  }
  const ImportedEntity& bySource(const std::string& id) {
    static const ImportedEntity kNone;
    for (const ImportedEntity& entity : report_.entities)
      if (entity.source.id == id) return entity;
    ADD_FAILURE() << "no entity comes from " << id;
    return kNone;
  }
  template<class T> ZnDbHolder<T> open(const std::string& id) { return ZnDbHolder<T>(bySource(id).id); }

  ZnDbDatabase database_;
  ImportReport report_;
};

testing::AssertionResult isAt(const ZnGePoint3d& point, double x, double y) {
  if (std::hypot(point.x - x, point.y - y) < kNear && point.z == 0) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "(" << point.x << ", " << point.y << ", " << point.z << ")";
}

} // namespace

// Two user units are a millimetre, and the page's lower edge is the drawing's y = 0.
TEST_F(SceneImportTest, extents_in_millimetres) {
  struct Case {
    const char *id, *element;
    const ZnRxClass* cls;
    double left, below, right, above;
  };
  const Case kCases[] = {
      {"l", "<line id='l' x1='20' y1='40' x2='100' y2='180' stroke='#000'/>", ZnDbLine::desc(), 10, 10, 50,
       80},
      {"c", "<circle id='c' cx='100' cy='100' r='40' stroke='#000'/>", ZnDbCircle::desc(), 30, 30, 70, 70},
      {"a", "<path id='a' d='M100 60A40 40 0 0 1 140 100' fill='none' stroke='#000'/>", ZnDbArc::desc(), 50,
       50, 70, 70},
      {"e", "<ellipse id='e' cx='100' cy='100' rx='20' ry='60' stroke='#000'/>", ZnDbEllipse::desc(), 40, 20,
       60, 80},
      {"r", "<rect id='r' x='20' y='20' width='60' height='40' stroke='#000'/>", ZnDbPolyline::desc(), 10, 70,
       40, 90},
      {"s", "<path id='s' d='M0 100C0 20 40 20 40 100' fill='none' stroke='#000'/>", ZnDbSpline::desc(), 0,
       50, 20, 80},
      {"f", "<g transform='rotate(90)'><line id='f' x1='20' y1='-40' x2='60' y2='-40' stroke='#000'/></g>",
       ZnDbLine::desc(), 20, 70, 20, 90},
  };
  std::string content;
  for (const Case& test : kCases) content += test.element;
  import(content);
  EXPECT_EQ(database_.insertionUnits(), 4);
  EXPECT_EQ(report_.entities.size(), std::size(kCases));
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.id);
    const ImportedEntity& imported = bySource(test.id);
    EXPECT_EQ(imported.id.objectClass(), test.cls);
    EXPECT_EQ(imported.block, database_.modelSpaceId());
    ZnGeBoundBlock3d extents;
    const ZnDbHolder<ZnDbEntity> entity(imported.id);
    ASSERT_EQ(entity->getGeomExtents(extents), Quorl::eOk);
    EXPECT_NEAR(extents.min().x, test.left, 1e-6);
    EXPECT_NEAR(extents.min().y, test.below, 1e-6);
    EXPECT_NEAR(extents.max().x, test.right, 1e-6);
    EXPECT_NEAR(extents.max().y, test.above, 1e-6);
  }
}

TEST_F(SceneImportTest, traits) {
  import("<g id='cut' e:groupmode='layer' e:label='cut'>"
         "<line id='red' x2='9' stroke='#ff0000' stroke-width='1'/>"
         "<line id='red2' x2='9' y2='8' stroke='red' stroke-width='1.02' stroke-dasharray='8 4'/>"
         "<line id='blue' x2='9' y2='7' stroke='#0000ff' stroke-opacity='.2' stroke-dasharray='8 4'/>"
         "<line id='odd' x2='9' y2='6' stroke='red' stroke-dasharray='6'/>"
         "<line id='dots' x2='9' y2='5' stroke='red' stroke-width='2' stroke-dasharray='.02 4'/>"
         "<rect id='area' width='8' height='7' fill='#00ff00'/>"
         "<line id='gone' x2='9' y2='5' stroke='red' visibility='hidden'/></g>"
         "<g id='off' e:groupmode='layer' e:label='off' style='display:none'><circle id='o' r='9' "
         "stroke='red'/></g>");
  struct Case {
    const char *id, *layer;
    ZnCmColor color;
    ZnDb::LineWeight weight;
    std::vector<double> dashes;
    int alpha;
    bool visible;
  };
  const Case kCases[] = {
      {"red", "cut", {}, ZnDb::kLineWeight050, {}, 255, true},
      {"red2", "cut", {}, ZnDb::kLineWeight050, {4, -2}, 255, true},
      {"blue", "cut", ZnCmColor::fromRgb(0, 0, 255), ZnDb::kLineWeight050, {4, -2}, 51, true},
      {"odd", "cut", {}, ZnDb::kLineWeight050, {3, -3}, 255, true},
      {"dots", "cut", {}, ZnDb::kLineWeight100, {0, -2}, 255, true},
      {"area", "cut", ZnCmColor::fromRgb(0, 255, 0), ZnDb::kLineWeight000, {}, 255, true},
      {"gone", "cut", {}, ZnDb::kLineWeight050, {}, 255, false},
      {"o", "off", {}, ZnDb::kLineWeight050, {}, 255, false},
  };
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.id);
    const ZnDbHolder<ZnDbEntity> entity(bySource(test.id).id);
    ASSERT_TRUE(entity.isOpen());
    EXPECT_EQ(entity->layer().utf8(), test.layer);
    EXPECT_EQ(entity->color(), test.color);
    EXPECT_EQ(entity->lineWeight(), test.weight);
    EXPECT_EQ(entity->transparency().alpha(), test.alpha);
    EXPECT_EQ(entity->visibility() == ZnDb::kVisible, test.visible);
    EXPECT_EQ(bySource(test.id).hiddenReason.empty(), test.visible);
    const ZnDbHolder<ZnDbLinetypeTableRecord> linetype(entity->linetypeId());
    ASSERT_EQ(linetype->numDashes(), static_cast<int>(test.dashes.size()));
    for (std::size_t i = 0; i < test.dashes.size(); ++i)
      EXPECT_NEAR(linetype->dashLengthAt(static_cast<int>(i)), test.dashes[i], kNear);
  }
  EXPECT_EQ(open<ZnDbEntity>("blue")->linetypeId(), open<ZnDbEntity>("red2")->linetypeId());
  const ZnDbHolder<ZnDbLayerTableRecord> cut(open<ZnDbEntity>("red")->layerId());
  EXPECT_EQ(cut->color(), ZnCmColor::fromRgb(255, 0, 0));
  EXPECT_FALSE(cut->isOff());
  const ZnDbHolder<ZnDbLayerTableRecord> off(open<ZnDbEntity>("o")->layerId());
  EXPECT_TRUE(off->isOff());
}

TEST_F(SceneImportTest, repeated_content_becomes_a_block) {
  import("<defs><g id='pad'><circle id='hole' r='4' stroke='#000'/></g></defs>"
         "<use id='u1' href='#pad' x='100' y='50'/><use id='u2' href='#pad' transform='translate(40 80) "
         "scale(3)'/>");
  const ImportedEntity& hole = bySource("hole");
  const ImportedEntity &first = bySource("u1"), &second = bySource("u2");
  const ZnDbHolder<ZnDbBlockReference> small(first.id), large(second.id);
  ASSERT_TRUE(small.isOpen());
  ASSERT_TRUE(large.isOpen());
  EXPECT_EQ(hole.block, small->blockTableRecord());
  EXPECT_EQ(hole.block, large->blockTableRecord());
  const ZnDbHolder<ZnDbCircle> circle(hole.id);
  EXPECT_TRUE(isAt(small->blockTransform() * circle->center(), 50, 75));
  EXPECT_TRUE(isAt(large->blockTransform() * circle->center(), 20, 60));
  EXPECT_NEAR((large->blockTransform() * ZnGeVector3d(circle->radius(), 0, 0)).length(), 6, kNear);
  EXPECT_TRUE(large->blockTransform().isUniformlyScaled());

  ASSERT_EQ(report_.circles.size(), 2u);
  EXPECT_EQ(report_.circles[0].entity, first.id);
  EXPECT_NEAR(report_.circles[0].circle.radius, 2, kNear);
  EXPECT_EQ(report_.circles[1].entity, second.id);
  EXPECT_NEAR(report_.circles[1].circle.center.y, 60, kNear);
}

TEST_F(SceneImportTest, letters) {
  import("<text id='t' x='100' y='60' font-size='20' text-anchor='middle'>Bore</text>"
         "<text id='m' transform='matrix(-1 0 0 1 100 60)' font-size='20'>back</text>"
         "<text id='r' transform='translate(40 40) rotate(-90)' font-size='10'>up</text>");
  const auto text = open<ZnDbText>("t"), mirrored = open<ZnDbText>("m"), turned = open<ZnDbText>("r");
  EXPECT_EQ(text->textString(), L"Bore");
  EXPECT_TRUE(isAt(text->position(), 50, 70));
  EXPECT_NEAR(text->height(), 7, kNear); // capitals of a font of 10 mm
  EXPECT_EQ(text->horizontalAlign(), ZnDb::kTextCenter);
  struct Case {
    const ZnDbText& entity;
    double alongX, alongY, upX, upY;
  };
  for (const Case& test :
       {Case{*text, 1, 0, 0, 1}, Case{*mirrored, -1, 0, 0, 1}, Case{*turned, 0, 1, -1, 0}}) {
    SCOPED_TRACE(test.entity.textString().utf8());
    const ZnGeVector3d along = test.entity.direction(), up = test.entity.normal().crossProduct(along);
    EXPECT_TRUE(along.isEqualTo(ZnGeVector3d(test.alongX, test.alongY, 0)));
    EXPECT_TRUE(up.isEqualTo(ZnGeVector3d(test.upX, test.upY, 0)));
  }
}

TEST_F(SceneImportTest, names_are_made_fit_and_layers_are_shared) {
  import("<g e:groupmode='layer' e:label='a/b'><line id='p' x2='9' stroke='red'/></g>"
         "<g e:groupmode='layer' e:label='a:b'><line id='q' x2='9' stroke='red'/></g>"
         "<g e:groupmode='layer' e:label='Same'><line id='r' x2='9' stroke='red'/></g>"
         "<g e:groupmode='layer' e:label='SAME'><line id='s' x2='9' stroke='red'/></g>");
  EXPECT_EQ(open<ZnDbEntity>("p")->layer(), L"a_b");
  EXPECT_EQ(open<ZnDbEntity>("q")->layer(), L"a_b_2");
  EXPECT_EQ(open<ZnDbEntity>("r")->layer(), L"Same");
  EXPECT_EQ(open<ZnDbEntity>("s")->layer(), L"SAME_2");
  const ZnDbObjectId layer = open<ZnDbEntity>("r")->layerId();
  import("<g e:groupmode='layer' e:label='SAME'><line id='t' x2='9' stroke='blue'/></g>");
  EXPECT_EQ(open<ZnDbEntity>("t")->layerId(), layer);
  EXPECT_EQ(open<ZnDbEntity>("t")->color(), ZnCmColor::fromRgb(0, 0, 255));
}

TEST_F(SceneImportTest, white_backdrops_are_hidden) {
  import("<rect id='paper' width='400' height='200' fill='white'/>"
         "<rect id='plate' width='400' height='200' fill='#eee'/>"
         "<rect id='label' width='40' height='20' fill='white'/>"
         "<rect id='frame' width='400' height='200' fill='white' stroke='#000'/>");
  for (const char* id : {"paper", "plate", "label", "frame"})
    EXPECT_EQ(open<ZnDbEntity>(id)->visibility() == ZnDb::kInvisible, std::string(id) == "paper") << id;
}

TEST_F(SceneImportTest, files) {
  const std::string path = scratchPath("drawing.svg");
  std::ofstream(path) << page("<circle id='c' cx='10' cy='30' r='4' stroke='#000'/><image id='i'/>");
  Quorl::Failure error;
  ASSERT_TRUE(importSvgFile(path, {}, database_, report_, error)) << error.text();
  EXPECT_EQ(report_.page.width, 200);
  EXPECT_EQ(report_.page.height, 100);
  const ZnGePoint2d corner = report_.page.userToPage * ZnGePoint2d{400, 200};
  EXPECT_NEAR(corner.x, 200, kNear);
  EXPECT_NEAR(corner.y, 0, kNear);
  ASSERT_EQ(report_.skipped.size(), 1u);
  EXPECT_EQ(report_.skipped[0].what, "<image id=\"i\">");

  std::ofstream(path) << "<svg><g></svg>";
  const std::size_t before = database_.objectCount();
  for (const std::string& bad : {path, scratchPath("missing.svg"), scratchPath("")}) {
    EXPECT_FALSE(importSvgFile(bad, {}, database_, report_, error));
    EXPECT_EQ(error.file, bad);
    EXPECT_EQ(database_.objectCount(), before);
  }
}
