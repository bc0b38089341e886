// Pictures by their ink, their size and their bytes.
#include "interchange/draw/picture_writer.h"
#include "interchange/svg_in/svg_reader.h"

#include "interchange_draw/picture_probe.h"
#include "interchange_draw/scratch.h"

#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/point.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/layout.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/nurb_curve3d.h"

#include <pugixml.hpp>

#include "support/file_content.h"
#include "support/host_drawing.h"
#include "support/told_cases.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

using namespace interchange;
using interchange_test::PictureProbe;
using interchange_test::scratchPath;

namespace {

constexpr double kPage = 100; // millimetres a side, one drawing unit to the millimetre

// On a page whose lower left corner is the drawing's origin: the frame's corners keep the extents there.
PictureOptions pageOptions() {
  PictureOptions options;
  options.pageWidth = options.pageHeight = kPage;
  options.margin = 0;
  options.scale = 1;
  options.longerSidePixels = 1000;
  return options;
}

void addFrame(HostDrawing& drawing) {
  drawing.add(new ZnDbPoint(ZnGePoint3d(0, 0, 0)));
  drawing.add(new ZnDbPoint(ZnGePoint3d(kPage, kPage, 0)));
}

std::string drawn(const HostDrawing& drawing, const PictureOptions& options, const char* name = "picture.png",
                  const std::vector<const ZnDbEntity*>& extra = {}) {
  const std::string path = scratchPath(name);
  Quorl::Failure error;
  EXPECT_TRUE(writePicture(drawing.db, path, options, error, extra)) << error.text();
  return path;
}

// Everything that a picture can hold.
void fillDrawing(HostDrawing& drawing) {
  const ZnDbObjectId center = drawing.addLinetype(L"CENTER", {12, -2, 2, -2});
  const ZnDbObjectId dots = drawing.addLinetype(L"DOT", {0, -2});
  const ZnDbObjectId block = drawing.addBlock(L"mark");
  drawing.addLine({-5, 0, 0}, {5, 0, 0}, block);
  drawing.add(new ZnDbCircle(ZnGePoint3d(0, 0, 0), ZnGeVector3d::kZAxis, 2), block);
  for (int i = 0; i < 3; ++i) {
    auto* reference = new ZnDbBlockReference(ZnGePoint3d(20 + 20 * i, 20, 0), block);
    change(drawing.add(reference), [i](ZnDbEntity& entity) { entity.setColorIndex(i + 1); });
  }
  const ZnDbObjectId dashed = drawing.addLine({10, 40, 0}, {90, 40, 0});
  change(dashed, [&](ZnDbEntity& entity) { entity.setLinetype(center); });
  const ZnDbObjectId dotted = drawing.add(new ZnDbCircle(ZnGePoint3d(50, 70, 0), ZnGeVector3d::kZAxis, 15));
  change(dotted, [&](ZnDbEntity& entity) {
    entity.setLinetype(dots);
    entity.setTransparency(ZnCmTransparency(128));
  });
  drawing.add(new ZnDbText(ZnGePoint3d(10, 80, 0), L"Ø 12 gjp", 5, 0.2));
  addFrame(drawing);
}

} // namespace

// Letters with blanks, and dots of linetypes and points, which are no holes.
TEST(Picture, svg_reads_back_with_nothing_passed_over) {
  HostDrawing drawing;
  fillDrawing(drawing);
  const std::string path = drawn(drawing, pageOptions(), "picture.svg");
  const SvgReadResult read = readSvg(contentOf(path), path);
  ASSERT_FALSE(read.error) << read.error->text();
  for (const Skipped& skipped : read.scene.skipped) ADD_FAILURE() << skipped.what << ": " << skipped.why;
  for (const Quorl::Failure& problem : read.scene.problems) ADD_FAILURE() << problem.text();
  const auto isCircle = [](const Element& element) { return std::holds_alternative<Circle>(element.shape); };
  const std::vector<Element>& elements = read.scene.elements;
  EXPECT_EQ(std::count_if(elements.begin(), elements.end(), isCircle), 3);
}

TEST(Picture, ink_lies_on_the_shapes) {
  struct Case {
    const char* name;
    ZnDbEntity* entity;
    std::vector<ZnGePoint2d> on, off;
  };
  auto* bulged = new ZnDbPolyline;
  bulged->addVertexAt(0, ZnGePoint2d(20, 20));
  bulged->addVertexAt(1, ZnGePoint2d(60, 20), 1.0); // a half circle, counterclockwise
  bulged->addVertexAt(2, ZnGePoint2d(60, 60));
  bulged->setClosed(true);
  ZnGeNurbCurve3d parabola;
  ASSERT_EQ(parabola.set(2, {0, 0, 0, 1, 1, 1}, {{10, 10, 0}, {50, 90, 0}, {90, 10, 0}}), Quorl::eOk);
  const double half = std::sqrt(0.5);
  const Case kCases[] = {
      {"line",
       new ZnDbLine(ZnGePoint3d(10, 20, 5), ZnGePoint3d(90, 60, -5)),
       {{50, 40}, {30, 30}},
       {{50, 45}, {5, 17}}},
      {"circle",
       new ZnDbCircle(ZnGePoint3d(50, 50, 0), ZnGeVector3d::kZAxis, 30),
       {{80, 50}, {50, 20}},
       {{50, 50}}},
      {"circle on edge",
       new ZnDbCircle(ZnGePoint3d(50, 50, 0), ZnGeVector3d::kXAxis, 30),
       {{50, 75}, {50, 25}},
       {{80, 50}, {50, 81}}},
      {"leaning circle",
       new ZnDbCircle(ZnGePoint3d(50, 50, 0), ZnGeVector3d(half, 0, half), 30),
       {{50, 80}, {50 + 30 * half, 50}},
       {{80, 50}}},
      {"arc",
       new ZnDbArc(ZnGePoint3d(50, 50, 0), 30, 0, std::acos(-1) / 2),
       {{50 + 30 * half, 50 + 30 * half}, {79.9, 51}},
       {{20, 50}, {50, 20}}},
      {"ellipse",
       new ZnDbEllipse(
           ZnGeEllipticalArc3d(ZnGePoint3d(50, 50, 0), ZnGeVector3d(40, 0, 0), ZnGeVector3d(0, 10, 0))),
       {{90, 50}, {50, 60}, {50 + 40 * half, 50 + 10 * half}},
       {{50, 50}, {85, 58}}},
      {"bulged polyline", bulged, {{40, 20}, {80, 40}, {40, 40}}, {{60, 40}, {40, 60}}},
      {"spline", new ZnDbSpline(parabola), {{50, 50}, {30, 40}}, {{50, 60}, {50, 10}}},
      {"point", new ZnDbPoint(ZnGePoint3d(50, 50, 0)), {{50, 50}}, {{50, 51}}},
      {"text", new ZnDbText(ZnGePoint3d(20, 20, 0), L"IIIIII", 10), {}, {{19, 25}, {22, 31}, {22, 19}}},
  };
  int number = 0;
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.name);
    HostDrawing drawing;
    addFrame(drawing);
    drawing.add(test.entity);
    const PictureProbe probe(
        drawn(drawing, pageOptions(), ("shape" + std::to_string(++number) + ".png").c_str()), kPage);
    ASSERT_TRUE(probe.isRead());
    EXPECT_GT(probe.inkedPixels(), 40);
    for (const ZnGePoint2d& at : test.on) EXPECT_TRUE(probe.hasInkAt(at.x, at.y)) << at.x << ", " << at.y;
    for (const ZnGePoint2d& at : test.off) EXPECT_FALSE(probe.hasInkAt(at.x, at.y)) << at.x << ", " << at.y;
  }
}

TEST(Picture, dashes_weights_colors_and_references) {
  HostDrawing drawing;
  fillDrawing(drawing);
  const PictureProbe probe(drawn(drawing, pageOptions()), kPage);
  ASSERT_TRUE(probe.isRead());
  EXPECT_EQ(probe.width(), 1000);
  EXPECT_EQ(probe.height(), 1000);
  EXPECT_EQ(probe.colorAt(50, 40), 0u) << "the dashed line's middle is drawn";
  EXPECT_TRUE(probe.hasInkAt(10.2, 40));
  EXPECT_TRUE(probe.hasInkAt(89.8, 40));
  int gaps = 0;
  for (int i = 0; i < 800; ++i)
    gaps += !probe.hasInkAt(10 + i / 10.0, 40) && probe.hasInkAt(10 + (i - 1) / 10.0, 40);
  EXPECT_EQ(gaps, 8);
  // Entities of the block are by layer, on layer 0, and so of the foreground's color.
  for (const double x : {17.0, 37.0, 57.0}) EXPECT_EQ(probe.colorAt(x, 20), 0u);
}

TEST(Picture, thicker_lines_have_more_ink) {
  long before = 0;
  for (const ZnDb::LineWeight weight :
       {ZnDb::kLineWeight000, ZnDb::kLineWeightByLayer, ZnDb::kLineWeight100, ZnDb::kLineWeight200}) {
    HostDrawing drawing;
    addFrame(drawing);
    change(drawing.addLine({10, 50, 0}, {90, 50, 0}),
           [weight](ZnDbEntity& entity) { entity.setLineWeight(weight); });
    const PictureProbe probe(drawn(drawing, pageOptions()), kPage);
    EXPECT_GT(probe.inkedPixels(), before);
    EXPECT_EQ(probe.hasInkAt(50, 50.8), weight == ZnDb::kLineWeight200);
    before = probe.inkedPixels();
  }
}

TEST(Picture, hidden_things_leave_no_ink_and_no_room) {
  HostDrawing drawing;
  const ZnDbObjectId off =
      drawing.addLayer(L"off", [](ZnDbLayerTableRecord& layer) { layer.setIsOff(true); });
  const ZnDbObjectId block = drawing.addBlock(L"nested");
  change(drawing.addLine({0, 0, 0}, {500, 500, 0}, block),
         [off](ZnDbEntity& entity) { entity.setLayer(off); });
  drawing.addLine({0, 0, 0}, {20, 10, 0}, block);
  drawing.add(new ZnDbBlockReference(ZnGePoint3d(30, 20, 0), block));
  change(drawing.addLine({-900, 0, 0}, {900, 0, 0}), [off](ZnDbEntity& entity) { entity.setLayer(off); });
  change(drawing.addLine({0, -900, 0}, {0, 900, 0}),
         [](ZnDbEntity& entity) { entity.setVisibility(ZnDb::kInvisible); });
  PictureOptions options;
  options.margin = 2;
  const std::string path = drawn(drawing, options, "picture.svg");
  pugi::xml_document svg;
  ASSERT_TRUE(svg.load_file(path.c_str()));
  EXPECT_STREQ(svg.document_element().attribute("width").value(), "24mm");
  EXPECT_STREQ(svg.document_element().attribute("height").value(), "14mm");
  EXPECT_STREQ(svg.document_element().attribute("viewBox").value(), "0 0 2400 1400");
}

// The length of a square's diagonal line, insertion units, width and height of the page, margin and scale.
TEST(Picture, pages_are_as_large_as_told) {
  runToldCases(
      "interchange_draw/page_cases.txt", 9, [](const std::string&, const std::string& input, const Lines&) {
        HostDrawing drawing;
        PictureOptions options;
        double length = 0;
        int units = 0;
        std::istringstream(input) >> length >> units >> options.pageWidth >> options.pageHeight >>
            options.margin >> options.scale;
        drawing.db.setInsertionUnits(units);
        if (length > 0) drawing.addLine({3, 4, 0}, {3 + length, 4 + length, 0});
        pugi::xml_document svg;
        EXPECT_TRUE(svg.load_file(drawn(drawing, options, "page.svg").c_str()));
        const pugi::xml_node root = svg.document_element();
        return Lines{std::string(root.attribute("width").value()) + " " + root.attribute("height").value()};
      });
}

TEST(Picture, letters_stay_within_the_page) {
  for (const wchar_t* text : {L"iiiiiiiiiiiiiiiiiiii", L"MMMMMMMMMMMM", L"Outer diameter 1: 27.2mm"}) {
    for (const ZnDb::TextAlign align : {ZnDb::kTextLeft, ZnDb::kTextCenter, ZnDb::kTextRight}) {
      HostDrawing drawing;
      auto* entity = new ZnDbText(ZnGePoint3d(0, 0, 0), text, 10);
      entity->setHorizontalAlign(align);
      drawing.add(entity);
      PictureOptions options;
      options.margin = 1;
      const PictureProbe probe(drawn(drawing, options), 1000);
      const double height = 1000.0 * probe.height() / probe.width();
      ASSERT_GT(probe.inkedPixels(), 1000);
      // Ink comes near both ends of the page and stays off its edges.
      long nearLeft = 0, nearRight = 0, onEdges = 0;
      for (double y = 0; y < height; y += 0.5) {
        onEdges += probe.hasInkAt(1, y) + probe.hasInkAt(999, y);
        for (double x = 1; x < 80; x += 0.5) {
          nearLeft += probe.hasInkAt(x, y);
          nearRight += probe.hasInkAt(1000 - x, y);
        }
      }
      EXPECT_GT(nearLeft, 0);
      EXPECT_GT(nearRight, 0);
      EXPECT_EQ(onEdges, 0);
    }
  }
}

TEST(Picture, extra_entities_are_drawn_on_top) {
  HostDrawing drawing;
  addFrame(drawing);
  drawing.addLine({50, 10, 0}, {50, 90, 0});
  ZnDbLine line(ZnGePoint3d(10, 50, 0), ZnGePoint3d(90, 50, 0));
  line.setColorIndex(1);
  line.setLineWeight(ZnDb::kLineWeight100);
  const PictureProbe probe(drawn(drawing, pageOptions(), "extra.png", {&line}), kPage);
  EXPECT_EQ(probe.colorAt(50, 50), 0xff0000u);
  EXPECT_EQ(probe.colorAt(20, 50), 0xff0000u);
  const PictureProbe without(drawn(drawing, pageOptions()), kPage);
  EXPECT_FALSE(without.hasInkAt(20, 50));
}

TEST(Picture, layouts_show_model_space_through_viewports) {
  HostDrawing drawing;
  const ZnDbObjectId hidden = drawing.addLayer(L"hidden here", [](ZnDbLayerTableRecord&) {});
  drawing.addLine({-100, 0, 0}, {100, 0, 0});
  change(drawing.addLine({0, -100, 0}, {0, 100, 0}),
         [hidden](ZnDbEntity& entity) { entity.setLayer(hidden); });
  auto* viewport = new ZnDbViewport;
  viewport->setCenterPoint(ZnGePoint3d(60, 40, 0));
  viewport->setWidth(40);
  viewport->setHeight(20);
  viewport->setViewHeight(40); // half size
  const ZnDbObjectId id = drawing.add(viewport, drawing.db.paperSpaceId());
  change(id,
         [hidden](ZnDbEntity& entity) { static_cast<ZnDbViewport&>(entity).setLayerFrozen(hidden, true); });
  {
    ZnDbHolder<ZnDbDictionary> layouts(drawing.db.getLayoutDictionary());
    ZnDbObjectId layoutId;
    ASSERT_EQ(layouts->getAt(L"Layout1", layoutId), Quorl::eOk);
    ZnDbHolder<ZnDbLayout> layout;
    ASSERT_EQ(layout.openForWrite(layoutId), Quorl::eOk);
    ASSERT_EQ(layout->setPaperSize(kPage, kPage), Quorl::eOk);
  }
  PictureOptions options;
  options.layout = "Layout1";
  options.longerSidePixels = 1000;
  const PictureProbe probe(drawn(drawing, options), kPage);
  EXPECT_TRUE(probe.hasInkAt(50, 40)) << "the line through the window";
  EXPECT_TRUE(probe.hasInkAt(40, 45)) << "the window's frame";
  EXPECT_FALSE(probe.hasInkAt(30, 40)) << "outside of the window";
  EXPECT_FALSE(probe.hasInkAt(60, 45)) << "the layer frozen in the window";
}

// A file below a folder of its own, and the options; "folder.png" is a folder.
TEST(Picture, refusals_leave_what_stood_there) {
  HostDrawing drawing;
  drawing.addLine({0, 0, 0}, {100, 100, 0});
  runToldCases("interchange_draw/picture_refusals.txt", 13,
               [&](const std::string&, const std::string& input, const Lines&) {
                 std::istringstream words(input);
                 std::string file, option;
                 words >> file;
                 PictureOptions options;
                 for (double value = 0; words >> option;) {
                   if (option == "layout")
                     words >> options.layout;
                   else
                     words >> value;
                   if (option == "pixels") options.longerSidePixels = static_cast<int>(value);
                   if (option == "dpi") options.dpi = value;
                   if (option == "scale") options.scale = value;
                   if (option == "width") options.pageWidth = value;
                   if (option == "height") options.pageHeight = value;
                   if (option == "margin") options.margin = std::nan("");
                 }
                 const std::string folder = scratchPath("");
                 std::filesystem::create_directories(folder + "folder.png/inner");
                 const std::string path = folder + file;
                 const bool canStand = std::filesystem::exists(std::filesystem::path(path).parent_path()) &&
                                       file != "folder.png";
                 if (canStand) std::ofstream(path) << "stood there";
                 Quorl::Failure error;
                 EXPECT_FALSE(writePicture(drawing.db, path, options, error));
                 EXPECT_EQ(error.file, path);
                 if (canStand) EXPECT_EQ(contentOf(path), "stood there");
                 long entries = 0;
                 for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder))
                   ++entries;
                 EXPECT_EQ(entries, 1 + canStand) << "something was left beside the path";
                 std::filesystem::remove_all(folder);
                 return Lines{error.what, "expected " + error.expected};
               });
}
