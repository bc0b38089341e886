#include <gtest/gtest.h>

#include <fmt/format.h>

#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>

#include "support/run_program.h"

namespace {

using Json = nlohmann::json;

std::string circle(double x, double y, double radius) {
  return fmt::format("<circle cx='{:.4f}' cy='{:.4f}' r='{}'/>", x, y, radius);
}

std::string sheet(const std::string& content) {
  return "<svg xmlns='http://www.w3.org/2000/svg' width='200mm' height='200mm' viewBox='0 0 200 200' "
         "fill='none' stroke='black'>" +
         content + "</svg>";
}

// Holes of radius 3 around (100, 100), each off its place by that much, inwards and outwards in turn.
std::string ringOf(int count, double radius, double off = 0.0) {
  std::string holes;
  for (int i = 0; i < count; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / count, arm = radius + (i % 2 ? off : -off);
    holes += circle(100 + arm * std::cos(angle), 100 + arm * std::sin(angle), 3);
  }
  return holes;
}

std::string rowOf(int count, double y, double off = 0.0) {
  std::string holes;
  for (int i = 0; i < count; ++i) holes += circle(30 + 15 * i, y + (i % 2 ? off : 0.0), 3);
  return holes;
}

struct PatternCase {
  const char* name;
  std::string content, options;
  std::string found; // type, count of members and, with "+", a mark of its own on the pitch center
  int marks;         // single ones
};

std::ostream& operator<<(std::ostream& stream, const PatternCase& testCase) {
  return stream << testCase.name;
}

const PatternCase kCases[] = {
    {"a ring around a bore", ringOf(6, 40) + circle(100, 100, 20), "", "ring 6", 1},
    {"a ring alone marks its pitch center", ringOf(6, 40), "", "ring 6+", 0},
    {"a ring and a row", ringOf(6, 40) + rowOf(4, 20), "", "ring 6+, row 4", 0},
    {"patterns not wanted", ringOf(6, 40) + rowOf(4, 20), "--no-patterns", "", 10},
    {"rounded places are aligned", ringOf(8, 40, 0.002), "", "ring 8+", 0},
    {"but not further than wanted", ringOf(8, 40, 0.02), "--align 0.5", "", 8},
    {"nor at all", ringOf(8, 40, 0.002), "--align 0", "", 8},
    {"a row of rounded places", rowOf(5, 50, 0.01), "", "row 5", 0},
    {"holes of two sizes", rowOf(2, 50) + circle(60, 50, 4), "", "", 3},
    {"counterbores belong to their holes",
     rowOf(4, 50, 0.01) + circle(30, 50, 1.5) + circle(45, 50.01, 1.5) + circle(60, 50, 1.5), "", "row 4", 0},
    {"holes of two parts",
     rowOf(6, 50) +
         "<rect x='20' y='40' width='45' height='20'/><rect x='67' y='40' width='45' height='20'/>",
     "", "row 3, row 3", 0},
    {"holes that a limit leaves out", ringOf(6, 40), "--max-radius 2", "", 0},
    {"nothing drawn", "<line x1='0' y1='0' x2='9' y2='9'/>", "", "", 0},
};

class AnnotatePatterns : public testing::TestWithParam<PatternCase> {};

TEST_P(AnnotatePatterns, EachHoleBelongsToOneObject) {
  const PatternCase& testCase = GetParam();
  const ProgramFolder folder;
  folder.write("in.svg", sheet(testCase.content));
  const ProgramRun run =
      folder.run("quorl annotate in.svg -o out.bdoc --report report.json " + testCase.options);
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const Json report = Json::parse(folder.read("report.json"), nullptr, false);

  std::map<std::string, int> kinds, members;
  std::map<std::string, std::string> kindOf;
  for (const Json& center : report["centers"]) {
    EXPECT_TRUE(center["associative"].get<bool>());
    ++kinds[kindOf[center["handle"]] = center["kind"]];
  }
  for (const Json& hole : report["holes"]) ++members[hole["belongsTo"]];
  std::vector<std::string> found;
  for (const Json& pattern : report["patterns"]) {
    const std::string handle = pattern["handle"];
    EXPECT_EQ(kindOf[handle], "CENTERMARKPATTERN");
    EXPECT_FALSE(pattern["evidence"].get<std::string>().empty());
    EXPECT_LE(pattern["aligned"].get<double>(), 0.06); // 2 percent of the holes' radius
    found.push_back(fmt::format("{} {}{}", pattern["type"].get<std::string>(), members[handle],
                                pattern["showsCenterMark"].get<bool>() ? "+" : ""));
  }
  std::sort(found.begin(), found.end());
  EXPECT_EQ(fmt::format("{}", fmt::join(found, ", ")), testCase.found);
  EXPECT_EQ(kinds["CENTERMARK"], testCase.marks);
  EXPECT_EQ(members.size(), found.size() + static_cast<size_t>(testCase.marks));

  // What is saved is what the evaluation would give, and asking for it again adds nothing.
  const ProgramRun again = folder.run("quorl annotate out.bdoc -o again.tdoc --report report.json");
  ASSERT_EQ(again.exitCode, 0) << again.err;
  if (testCase.options.empty()) EXPECT_TRUE(Json::parse(folder.read("report.json"))["holes"].empty());
}

INSTANTIATE_TEST_SUITE_P(Sheets, AnnotatePatterns, testing::ValuesIn(kCases));

TEST(AnnotateAgain, AHoleThatLeftItsRingGetsAMark) {
  const ProgramFolder folder;
  folder.write("in.svg", sheet(ringOf(6, 40)));
  ASSERT_EQ(folder.run("quorl annotate in.svg -o a.bdoc").exitCode, 0);
  folder.write("move.quorl", "MOVE 143,100 9,0\n");
  ASSERT_EQ(folder.run("quorl run move.quorl a.bdoc -o b.bdoc").exitCode, 0);
  EXPECT_TRUE(holdsAll(folder.run("quorl annotate b.bdoc -o c.bdoc").out, {"1 center mark\n"}));
  EXPECT_TRUE(holdsAll(folder.run("quorl annotate c.bdoc -o d.bdoc").out, {"0 center marks\n"}));
}

// Only what was read from decimals just now is taken for rounded; of a drawing that is asked.
TEST(AnnotateAgain, AnInexactRingInADrawingIsTold) {
  const ProgramFolder folder;
  folder.write("in.svg", sheet(ringOf(6, 40, 0.01)));
  ASSERT_EQ(folder.run("quorl convert in.svg a.bdoc").exitCode, 0);
  EXPECT_TRUE(holdsAll(folder.run("quorl annotate a.bdoc -o b.bdoc").out,
                       {"6 center marks\n", "1 ring or row of holes is not exact enough", "--align 2"}));
  EXPECT_TRUE(
      holdsAll(folder.run("quorl annotate a.bdoc -o b.bdoc --align 2").out, {"1 center mark pattern\n"}));
}

// An SVG that is annotated onto itself stays what it is the second time.
TEST(AnnotateAgain, TheSameDocumentIsNotMarkedTwice) {
  const ProgramFolder folder;
  folder.write("in.svg", sheet(ringOf(6, 40) + rowOf(4, 20)));
  ASSERT_EQ(folder.run("quorl annotate in.svg -o in.svg").exitCode, 0);
  const std::string once = folder.read("in.svg");
  EXPECT_TRUE(holdsAll(once, {"quorl-annotation"}));
  ASSERT_EQ(folder.run("quorl annotate in.svg -o in.svg").exitCode, 0);
  EXPECT_EQ(folder.read("in.svg"), once);
}

} // namespace
