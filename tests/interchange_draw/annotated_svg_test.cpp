// Annotation on documents: the source stays as it was, and the strokes lie where the drawing says.
#include "interchange/draw/annotated_svg.h"

#include "interchange/draw/svg_insertion.h"
#include "interchange/draw/svg_path_target.h"
#include "interchange/svg_in/svg_reader.h"
#include "interchange_draw/scratch.h"

#include "quorl/db/entity/text.h"

#include <pugixml.hpp>

#include "support/file_content.h"
#include "support/host_drawing.h"
#include "support/told_cases.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace interchange;
using interchange_test::scratchPath;

namespace {

const std::string kOpen = "<svg xmlns='http://www.w3.org/2000/svg' ";
const std::string kMillimetres = kOpen + "width='100mm' height='50mm' viewBox='0 0 100 50'>";

// The annotated source, with the page as the reader finds it.
std::string annotate(const std::string& source, const HostDrawing& drawing,
                     const std::vector<ZnDbObjectId>& ids) {
  const SvgReadResult read = readSvg(source, "source.svg");
  EXPECT_FALSE(read.error) << read.error->text();
  std::string annotated;
  Quorl::Failure error;
  EXPECT_TRUE(
      annotateSvg(source, sourcePageOf(source, read.scene.document), drawing.db, ids, {}, annotated, error))
      << error.text();
  return annotated;
}

std::string annotationOf(const std::string& svg) {
  const std::size_t start = svg.find("id=\"quorl-annotation");
  const std::size_t tag = svg.rfind('<', start);
  const std::size_t end = svg.find("g>", start);
  return start == std::string::npos || end == std::string::npos
             ? ""
             : svg.substr(tag, svg.find('\n', end) + 1 - tag);
}

} // namespace

TEST(AnnotatedSvg, sources_stay_byte_by_byte) {
  const std::string kSources[] = {
      kMillimetres + "<g>\n<path d='M0,0 L 1,1'/></g></svg>\n",
      "<?xml version=\"1.0\" encoding='UTF-8'?>\r\n<!DOCTYPE svg [ <!ENTITY ns 'http://x'> <!-- ]> </svg> "
      "-->\n ]>\r\n" +
          kMillimetres + "<title lang='a > b'>a &amp; b</title></svg >",
      kMillimetres +
          "<style><![CDATA[ path > g { fill: red } </svg> ]]></style><g id='a > b'/></svg><!-- </svg> -->\n",
      "<!-- <svg> -->" + kMillimetres + "<svg x='1'><g/></svg>\t</svg>",
      kMillimetres + "<g style=\"a:'/>'\"></g   ></svg\n>",
  };
  HostDrawing drawing;
  const std::vector<ZnDbObjectId> ids{drawing.addLine({10, 10, 0}, {20, 10, 0})};
  for (const std::string& source : kSources) {
    SCOPED_TRACE(source);
    std::string annotated = annotate(source, drawing, ids);
    const std::string group = annotationOf(annotated);
    ASSERT_FALSE(group.empty());
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(annotated.c_str()));
    const pugi::xml_node last = document.document_element().last_child();
    EXPECT_STREQ(last.attribute("id").value(), "quorl-annotation");
    EXPECT_TRUE(last.child("path"));
    annotated.erase(annotated.find(group), group.size());
    EXPECT_EQ(annotated, source);
  }
}

// One line of the drawing, in the user coordinates of differently laid out pages.
TEST(AnnotatedSvg, strokes_lie_in_user_coordinates) {
  HostDrawing drawing;
  const std::vector<ZnDbObjectId> ids{drawing.addLine({10, 10, 0}, {30, 20, 0})};
  runToldCases("interchange_draw/stroke_cases.txt", 7,
               [&](const std::string&, const std::string& root, const Lines&) {
                 const std::string annotated = annotate(kOpen + root + "><g/></svg>", drawing, ids);
                 const auto between = [&](const std::string& before, char end) {
                   const std::size_t at = annotated.find(before) + before.size();
                   return annotated.substr(at, annotated.find(end, at) - at);
                 };
                 return Lines{between(" d=\"", '"') + " of width " + between("stroke-width:", ';')};
               });
}

// What was drawn on a circle of the source is read back where the source has it.
TEST(AnnotatedSvg, dashes_are_strokes_of_their_own) {
  HostDrawing drawing;
  const ZnDbObjectId center = drawing.addLinetype(L"CENTER", {12, -2, 2, -2});
  const ZnDbObjectId line = drawing.addLine({10, 20, 0}, {46, 20, 0});
  change(line, [center](ZnDbEntity& entity) {
    entity.setLinetype(center);
    entity.setColorIndex(1);
    entity.setTransparency(ZnCmTransparency(51));
  });
  const std::string annotated = annotate(kMillimetres + "</svg>", drawing, {line});
  EXPECT_NE(annotated.find("d=\"M10 30L16 30M18 30L20 30M22 30L34 30M36 30L38 30M40 30L46 30\""),
            std::string::npos)
      << annotated;
  for (const char* paint : {"stroke:#ff0000", "stroke-opacity:0.2", "stroke-dasharray:none", "fill:none"})
    EXPECT_NE(annotated.find(paint), std::string::npos) << paint;
}

TEST(AnnotatedSvg, what_is_hidden_erased_or_outside) {
  HostDrawing drawing;
  const ZnDbObjectId off =
      drawing.addLayer(L"off", [](ZnDbLayerTableRecord& layer) { layer.setIsOff(true); });
  const ZnDbObjectId hidden = drawing.addLine({1, 1, 0}, {2, 2, 0}),
                     erased = drawing.addLine({3, 3, 0}, {4, 4, 0});
  const ZnDbObjectId inside = drawing.addLine({5, 5, 0}, {6, 6, 0}),
                     outside = drawing.addLine({-5, 5, 0}, {6, 6, 0});
  change(hidden, [off](ZnDbEntity& entity) { entity.setLayer(off); });
  change(erased, [](ZnDbEntity& entity) { entity.erase(); });
  const std::string within = annotate(kMillimetres + "</svg>", drawing, {hidden, erased, inside});
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(within.c_str()));
  const pugi::xml_node group = document.document_element().last_child();
  EXPECT_EQ(std::distance(group.begin(), group.end()), 1);
  EXPECT_FALSE(group.attribute("style"));
  const std::string beyond = annotate(kMillimetres + "</svg>", drawing, {outside});
  EXPECT_NE(beyond.find("<g id=\"quorl-annotation\" style=\"overflow:visible\">"), std::string::npos);
}

TEST(AnnotatedSvg, unusual_roots) {
  HostDrawing drawing;
  const std::vector<ZnDbObjectId> ids{drawing.addLine({10, 10, 0}, {20, 10, 0})};
  const std::string once = annotate(kMillimetres + "</svg>", drawing, ids);
  EXPECT_EQ(annotate(once, drawing, ids), once) << "replaced, not doubled";
  const std::string theirs = kMillimetres + "<g id=\"quorl-annotation\"><g/></g>\n</svg>";
  const std::string beside = annotate(theirs, drawing, ids);
  EXPECT_NE(beside.find("id=\"quorl-annotation-2\""), std::string::npos);
  EXPECT_EQ(beside.find("<g id=\"quorl-annotation\"><g/></g>\n"), theirs.find("<g id"));

  const std::string prefixed =
      annotate("<s:svg xmlns:s='http://www.w3.org/2000/svg' width='9mm' height='9mm'></s:svg>", drawing, ids);
  EXPECT_NE(prefixed.find("<s:g id=\"quorl-annotation\""), std::string::npos);
  EXPECT_NE(prefixed.find("</s:g>\n</s:svg>"), std::string::npos);

  const std::string empty = annotate(kOpen + "width='9mm' height='9mm'/>", drawing, ids);
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(empty.c_str())) << empty;
  EXPECT_TRUE(document.document_element().child("g").child("path"));

  std::string wide = "\xff\xfe";
  for (const char c : "<?xml version='1.0' encoding='UTF-16'?>" + kMillimetres + "</svg>") wide += {c, '\0'};
  const std::string narrowed = annotate(wide, drawing, ids);
  EXPECT_EQ(narrowed.find("UTF-16"), std::string::npos);
  ASSERT_TRUE(document.load_string(narrowed.c_str())) << narrowed;
  EXPECT_TRUE(document.document_element().child("g"));
}

TEST(AnnotatedSvg, letters_become_outlines) {
  HostDrawing drawing;
  const ZnDbObjectId text = drawing.add(new ZnDbText(ZnGePoint3d(10, 10, 0), L"I", 20));
  const std::string annotated = annotate(kMillimetres + "</svg>", drawing, {text});
  const SvgReadResult read = readSvg(annotated, "annotated.svg");
  ASSERT_FALSE(read.error);
  ASSERT_EQ(read.scene.elements.size(), 1u);
  const auto* outline = std::get_if<Polyline>(&read.scene.elements[0].shape);
  ASSERT_NE(outline, nullptr);
  double below = 100, above = 0;
  for (const Vertex& vertex : outline->vertices) {
    below = std::min(below, vertex.point.y);
    above = std::max(above, vertex.point.y);
  }
  EXPECT_NEAR(below, 10, 0.01);
  EXPECT_NEAR(above, 30, 0.02);
}

TEST(AnnotatedSvg, files_and_refusals) {
  HostDrawing drawing;
  const std::vector<ZnDbObjectId> ids{drawing.addLine({10, 10, 0}, {20, 10, 0})};
  const SourcePage page{ZnGeMatrix2d({0, 50}, {1, 0}, {0, -1}), 100, 50};
  const std::string source = scratchPath("source.svg"), target = scratchPath("target.svg");
  std::ofstream(source) << kMillimetres << "</svg>";
  Quorl::Failure error;
  ASSERT_TRUE(writeAnnotatedSvg(source, page, drawing.db, ids, target, {}, error)) << error.text();
  const std::string written = contentOf(target);
  EXPECT_FALSE(annotationOf(written).empty());

  struct Case {
    const char *name, *content;
    SourcePage page;
    const char* what;
  };
  const Case kCases[] = {
      {"no XML", "<svg><g></svg>", page, "no XML"},
      {"nothing", "", page, "no XML"},
      {"another root", "<html></html>", page, "no svg element"},
      {"no page", "<svg/>", {ZnGeMatrix2d::scaling({0, 0}), 0, 0}, "no area"},
  };
  for (const Case& test : kCases) {
    SCOPED_TRACE(test.name);
    std::ofstream(source) << test.content;
    EXPECT_FALSE(writeAnnotatedSvg(source, test.page, drawing.db, ids, target, {}, error));
    EXPECT_EQ(error.file, source);
    EXPECT_NE(error.what.find(test.what), std::string::npos) << error.text();
    EXPECT_EQ(contentOf(target), written);
  }
  EXPECT_FALSE(writeAnnotatedSvg(scratchPath("missing.svg"), page, drawing.db, ids, target, {}, error));
  EXPECT_NE(error.what.find("can't be read"), std::string::npos);
}
