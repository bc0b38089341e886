#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "support/run_program.h"

namespace {

using Json = nlohmann::json;

// Runs annotate with a report and gives the report.
Json annotated(const ProgramFolder& folder, const std::string& arguments) {
  const ProgramRun run = folder.run("quorl annotate " + arguments + " --report report.json");
  EXPECT_EQ(run.exitCode, 0) << run.err;
  return Json::parse(folder.read("report.json"), nullptr, false);
}

std::string svg(const std::string& content) {
  return "<svg xmlns='http://www.w3.org/2000/svg' width='200mm' height='200mm' viewBox='0 0 200 200' "
         "fill='none' stroke='black'>" +
         content + "</svg>";
}

struct ChoiceCase {
  const char* name;
  const char* content;
  const char* options;
  std::vector<double> radii; // of the marks, in drawing order
};

std::ostream& operator<<(std::ostream& stream, const ChoiceCase& testCase) { return stream << testCase.name; }

// An arc from the right of (50, 50), radius 10, to a point of its circle.
const ChoiceCase kChoices[] = {
    {"one circle", "<circle cx='50' cy='50' r='10'/>", "", {10}},
    {"drawing order", "<circle cx='50' cy='50' r='10'/><circle cx='90' cy='50' r='12'/>", "", {10, 12}},
    {"concentric ones get one, on the outermost",
     "<circle cx='50' cy='50' r='4'/><circle cx='50' cy='50' r='10'/><circle cx='50.001' cy='50' r='7'/>",
     "",
     {10}},
    {"concentric within a limit get one on the outermost within",
     "<circle cx='50' cy='50' r='4'/><circle cx='50' cy='50' r='10'/>",
     "--max-radius 5",
     {4}},
    {"a small circle near the middle of a large one is not concentric",
     "<circle cx='50' cy='50' r='40'/><circle cx='50.07' cy='50' r='1'/>",
     "",
     {40, 1}},
    {"least radius",
     "<circle cx='50' cy='50' r='3'/><circle cx='90' cy='50' r='3.1'/>",
     "--min-radius 3.05",
     {3.1}},
    {"most radius, itself included",
     "<circle cx='50' cy='50' r='3'/><circle cx='90' cy='50' r='3.1'/>",
     "--max-radius 3",
     {3}},
    {"half a turn", "<path d='M60 50 A10 10 0 0 1 40 50'/>", "", {10}},
    {"less than half a turn", "<path d='M60 50 A10 10 0 0 1 40.01 50.447'/>", "", {}},
    {"a half circle of rounded ends", "<path d='M60 50 A10 10 0 0 1 40 50.05'/>", "", {10}},
    {"a degree short of half", "<path d='M60 50 A10 10 0 0 1 40.0015 50.1745'/>", "", {}},
    {"a quarter, asked for", "<path d='M60 50 A10 10 0 0 1 50 60'/>", "--arcs 89.9", {10}},
    {"three quarters, with more asked for", "<path d='M60 50 A10 10 0 1 1 50 40'/>", "--arcs 271", {}},
    {"rounded corners of an outline", "<rect x='20' y='20' width='100' height='50' rx='8'/>", "", {}},
    {"both ends of a slot", "<path d='M30 30 H80 A5 5 0 0 1 80 40 H30 A5 5 0 0 1 30 30 Z'/>", "", {5, 5}},
    {"hidden things",
     "<circle cx='50' cy='50' r='10' display='none'/><g visibility='hidden'><circle r='3'/></g>",
     "",
     {}},
    {"each use of a block",
     "<defs><g id='h'><circle r='2'/></g></defs><use href='#h' x='20' y='20'/><use href='#h' x='60' y='20'/>",
     "",
     {2, 2}},
    {"a block at twice its size",
     "<defs><g id='h'><circle r='2'/></g></defs><use href='#h' transform='translate(50 50) scale(2)'/>",
     "",
     {4}},
    {"keyhole, its large round end drawn as curves",
     "<path d='M39.55 27 C39.55 26.754 39.615 26.513 39.738 26.3 39.86 26.087 40.037 25.91 40.25 25.788 "
     "40.463 "
     "25.665 40.704 25.6 40.95 25.6 41.196 25.6 41.437 25.665 41.65 25.788 41.863 25.91 42.04 26.087 42.162 "
     "26.3 "
     "42.285 26.513 42.35 26.754 42.35 27 V30.087 A2.9 2.9 0 1 1 39.55 30.087 Z'/>",
     "",
     {1.4, 2.9}},
    {"reliefs at corners, a tool's and a burnt loop",
     "<path d='M20 20 H60 A2 2 0 1 1 62 22 V58 A1.4143 1.4143 0 0 1 60 60 H20 Z'/>",
     "",
     {}},
    {"a notch, and a lug too large for a relief",
     "<path d='M20 20 H40 A5 5 0 0 1 50 20 H80 A10 10 0 1 1 90 30 V60 H20 Z'/>",
     "",
     {5, 10}},
    {"no circle at all", "<line x1='0' y1='0' x2='50' y2='50'/>", "", {}},
};

class Choice : public testing::TestWithParam<ChoiceCase> {};

TEST_P(Choice, MarksTheCirclesThatAPersonWould) {
  const ProgramFolder folder;
  folder.write("in.svg", svg(GetParam().content));
  const Json report = annotated(folder, std::string("in.svg ") + GetParam().options);
  ASSERT_TRUE(report.contains("centers"));
  std::vector<double> radii;
  for (const Json& center : report["centers"])
    radii.push_back(std::round(center["radius"].get<double>() * 1000.0) / 1000.0);
  EXPECT_EQ(radii, GetParam().radii);
}

INSTANTIATE_TEST_SUITE_P(Drawings, Choice, testing::ValuesIn(kChoices));

TEST(Annotate, ReportHasTheFieldsOfAMark) {
  const ProgramFolder folder;
  folder.write("in.svg", svg("<circle cx='50' cy='50' r='10'/><image href='a.png' width='9' height='9'/>"));
  const Json report = annotated(folder, "in.svg -o out.bdoc");
  EXPECT_EQ(report["units"], "mm");
  EXPECT_EQ(report["entities"], (Json{{"ZnDbCircle", 1}, {"ZnDbBlockReference", 1}}));
  ASSERT_EQ(report["skipped"].size(), 1u);
  for (const char* field : {"what", "where", "why"})
    EXPECT_NE(report["skipped"][0].value(field, ""), "") << field;
  ASSERT_EQ(report["circles"].size(), 1u);
  EXPECT_LT(report["circles"][0]["deviation"].get<double>(), 1e-9);
  ASSERT_EQ(report["centers"].size(), 1u);
  const Json& mark = report["centers"][0];
  EXPECT_EQ(mark["kind"], "CENTERMARK");
  EXPECT_EQ(mark["associative"], true);
  EXPECT_EQ(mark["layer"], "Center Lines");
  EXPECT_EQ(mark["edges"], Json::array({report["circles"][0]["handle"]}));
  ASSERT_EQ(mark["curves"].size(), 6u);
  // The defaults: a cross of a tenth of the diameter, half of that as gap, lines half a unit beyond the
  // circle.
  const double reach[6][2] = {{-1, 1}, {-1, 1}, {-10.5, -2}, {2, 10.5}, {-10.5, -2}, {2, 10.5}};
  for (size_t i = 0; i < 6; ++i) {
    const Json& curve = mark["curves"][i];
    const size_t along = i == 0 || i == 2 || i == 3 ? 0 : 1;
    EXPECT_EQ(curve["index"], i);
    EXPECT_EQ(curve["type"], "line");
    EXPECT_TRUE(curve["radius"].is_null() && curve["startAngle"].is_null());
    for (size_t axis = 0; axis < 2; ++axis) {
      const double center = axis == 0 ? 50 : 150;
      EXPECT_NEAR(curve["start"][axis].get<double>(), center + (axis == along ? reach[i][0] : 0), 1e-9) << i;
      EXPECT_NEAR(curve["end"][axis].get<double>(), center + (axis == along ? reach[i][1] : 0), 1e-9) << i;
    }
  }
  const Json fromFile = Json::parse(folder.run("quorl report out.bdoc --json").out, nullptr, false);
  EXPECT_EQ(fromFile["centers"], report["centers"]);
}

TEST(Annotate, ASecondTimeAddsNothing) {
  const ProgramFolder folder;
  const Json first = annotated(folder, "$EXAMPLES/flange-plate.svg -o a.bdoc");
  const Json second = annotated(folder, "a.bdoc -o b.bdoc");
  EXPECT_EQ(first["centers"].size(), 8u);
  EXPECT_EQ(second["centers"], first["centers"]);
}

TEST(Annotate, MarksComeBackOnlyWhereTheyAreMissing) {
  const ProgramFolder folder;
  annotated(folder, "$EXAMPLES/flange-plate.svg -o a.bdoc");
  folder.write("erase.quorl", "ERASE 116,60\n"); // the middle of a cross
  ASSERT_EQ(folder.run("quorl run erase.quorl a.bdoc -o b.bdoc").exitCode, 0);
  EXPECT_EQ(Json::parse(folder.run("quorl report b.bdoc --json").out)["centers"].size(), 7u);
  EXPECT_EQ(annotated(folder, "b.bdoc -o c.bdoc")["centers"].size(), 8u);
}

TEST(Annotate, SourceDocumentStaysBeneathTheMarks) {
  const ProgramFolder folder;
  const std::string source = svg("<!-- as it was --><circle cx='50' cy='50' r='10'/>");
  folder.write("in.svg", source);
  annotated(folder, "in.svg -o in.svg -o other.svg");
  const std::string result = folder.read("in.svg");
  const size_t end = source.rfind("</svg>");
  EXPECT_EQ(result.substr(0, end), source.substr(0, end));
  EXPECT_NE(result.find("quorl-annotation"), std::string::npos);
  EXPECT_EQ(result, folder.read("other.svg"));
}

TEST(Annotate, SettingsGoIntoTheMarks) {
  const ProgramFolder folder;
  folder.write("in.svg", svg("<circle cx='50' cy='50' r='10'/>"));
  const Json report =
      annotated(folder, "in.svg --set CENTEREXE=3 --set CENTERLAYER=Axes --set centercrosssize=2");
  ASSERT_EQ(report["centers"].size(), 1u);
  const Json& mark = report["centers"][0];
  EXPECT_EQ(mark["layer"], "Axes");
  EXPECT_NEAR(mark["curves"][0]["end"][0].get<double>(), 51.0, 1e-9);
  EXPECT_NEAR(mark["curves"][3]["end"][0].get<double>(), 63.0, 1e-9);
}

TEST(Annotate, ABadSettingIsTold) {
  struct {
    const char* setting;
    const char* said;
  } const cases[] = {{"CENTEREXE=-1", "CENTEREXE"},
                     {"CENTEREXE=1e308", "out of range, expected numbers from"},
                     {"NOSUCH=1", "NOSUCH"},
                     {"CENTEREXE", "NAME=VALUE"},
                     {"=1", "NAME=VALUE"}};
  for (const auto& row : cases) {
    const ProgramFolder folder;
    const ProgramRun run = folder.run(
        std::string("quorl annotate $EXAMPLES/flange-plate.svg -o a.bdoc --set '") + row.setting + "'");
    EXPECT_EQ(run.exitCode, 1) << row.setting;
    EXPECT_TRUE(holdsAll(run.err, {"--set: ", row.said}));
    EXPECT_TRUE(folder.files().empty()) << row.setting;
  }
}

TEST(Annotate, OneBadFileStopsNoneOfTheOthers) {
  const ProgramFolder folder;
  folder.write("one.svg", svg("<circle cx='50' cy='50' r='10'/>"));
  folder.write("bad.svg", "<svg");
  folder.write("two.svg", svg("<circle cx='50' cy='50' r='10'/>"));
  const ProgramRun run = folder.run("quorl annotate one.svg bad.svg two.svg --out-dir out --report all.json");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(holdsAll(run.err, {"bad.svg:"}));
  EXPECT_EQ(folder.files(),
            (std::vector<std::string>{"all.json", "bad.svg", "one.svg", "out/one.bdoc", "out/one.svg",
                                      "out/two.bdoc", "out/two.svg", "two.svg"}));
  const Json drawings = Json::parse(folder.read("all.json"))["drawings"];
  ASSERT_EQ(drawings.size(), 3u);
  EXPECT_TRUE(drawings[0]["error"].is_null());
  EXPECT_EQ(drawings[0]["centers"].size(), 1u);
  EXPECT_TRUE(drawings[1]["error"].is_string());
}

TEST(Annotate, InputsOfOneNameDoNotOverwriteEachOther) {
  const ProgramFolder folder;
  std::filesystem::create_directory(folder.path() / "a");
  folder.write("a/in.svg", svg("<circle cx='50' cy='50' r='10'/>"));
  folder.write("in.svg", svg("<circle cx='50' cy='50' r='12'/>"));
  const ProgramRun run = folder.run("quorl annotate a/in.svg in.svg --out-dir out -o .tdoc");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(holdsAll(run.err, {"out/in.tdoc", "two results"}));
  EXPECT_TRUE(holdsAll(folder.run("quorl report out/in.tdoc").out, {"radius 10"}));
}

TEST(Annotate, OutputsOfADrawingAppearTogetherOrNotAtAll) {
  const ProgramFolder folder;
  const ProgramRun run = folder.run("quorl annotate $EXAMPLES/flange-plate.svg -o a.bdoc -o nowhere/a.png");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(holdsAll(run.err, {"nowhere/a.png"}));
  EXPECT_TRUE(folder.files().empty());
}

} // namespace
