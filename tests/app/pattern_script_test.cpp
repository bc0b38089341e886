#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

#include "support/run_program.h"

namespace {

const std::string kHoles = "CIRCLE 0,0 2 AS a\nCIRCLE 10,0 2 AS b\nCIRCLE 20,0 2 AS c\nCIRCLE 5,9 2 AS d\n"
                           "CIRCLE 5,3 2 AS off\nLINE 0,50 9,50 AS line\n"
                           "ARC 0,0 60 10 80 AS rim\n";
const std::string kRow = "CENTERPATTERN a b c AS p\n";

struct PatternFault {
  std::string lines; // after the holes; the last one fails
  std::string said;
};

std::ostream& operator<<(std::ostream& stream, const PatternFault& fault) { return stream << fault.lines; }

const PatternFault kFaults[] = {
    {"CENTERPATTERN line", "is no circle or arc"},
    {"CENTERPATTERN a b a", "is given twice"},
    {"CENTERPATTERN a b c TYPE POLAR", "the circles do not lie on one ring"},
    {"CENTERPATTERN a b TYPE POLAR", "the circles do not lie on one ring"},
    {"CENTERPATTERN a b d REF rim", "the circles do not lie on one ring"}, // which has another center
    {"CENTERPATTERN a b FULL ON", "only a ring can be closed"},
    {"CENTERPATTERN a b c MARK ON", "only a ring has a center to mark"},
    {"CENTERPATTERN a b REF rim TYPE LINEAR", "the reference does not fit the circles"},
    {"CENTERPATTERN a b REF rim @0,-60", "the reference is picked beyond its ends"},
    {"CENTERPATTERN a b REF line @x", "\"@x\", expected a pick @x,y"},
    {"CENTERPATTERN a b TYPE ROUND", "\"ROUND\", expected POLAR or LINEAR"},
    {"CENTERPATTERN a b FULL", "the line ends too early, expected ON, OFF or AUTO"},
    {"CENTERPATTERN EDIT a ADD b", "is no center object"},
    {"CENTERMARK a AS p\nCENTERPATTERN EDIT p ADD b", "is no center mark pattern"},
    {kRow + "CENTERPATTERN EDIT p", "the line ends too early, expected ADD, REMOVE"},
    {kRow + "CENTERPATTERN EDIT p a", "\"a\", expected ADD, REMOVE"},
    {kRow + "CENTERPATTERN EDIT p ADD a", "the pattern follows #10 already"},
    {kRow + "CENTERPATTERN EDIT p ADD d REMOVE d", "the pattern does not follow #13"}, // removing comes first
    {kRow + "CENTERPATTERN EDIT p REMOVE d", "the pattern does not follow #13"},
    {kRow + "CENTERPATTERN EDIT p CLEAR", "DISASSOCIATE lets it go"},
    {kRow + "CENTERPATTERN EDIT p REF rim", "the reference does not fit the circles"},
    {kRow + "CENTERPATTERN EDIT p OVERSHOOT CenterLine-0 1 2", "no center line \"CenterLine-0\""},
    {kRow + "CENTERPATTERN EDIT p OVERSHOOT CenterLine-0-1-2 -1 2", "takes these overshoots"},
    {kRow + "REASSOCIATE p a", "a pattern gets its edges by CENTERPATTERN EDIT"},
    {"PREVIEW x.bdoc a b", "x.bdoc is no picture, expected a name that ends in .svg"},
    {"PREVIEW x.png a b c TYPE POLAR", "the circles do not lie on one ring"},
};

class PatternScript : public testing::TestWithParam<PatternFault> {};

TEST_P(PatternScript, SaysWhyAndLeavesNothing) {
  const ProgramFolder folder;
  folder.write("in.quorl", kHoles + GetParam().lines + "\n");
  const ProgramRun run = folder.run("quorl run in.quorl -o out.bdoc");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(holdsAll(run.err, {GetParam().said}));
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"in.quorl"}));
}

INSTANTIATE_TEST_SUITE_P(Lines, PatternScript, testing::ValuesIn(kFaults));

// Content, handles to come, and what can be done again: none of it knows of the preview.
TEST(PatternPreviews, LeaveTheDrawingAsItIs) {
  const ProgramFolder folder;
  const std::string before = kHoles + "CIRCLE 70,70 1 AS gone\nUNDO\n", after = "REDO\nCENTERPATTERN a b d\n";
  folder.write("plain.quorl", before + after);
  folder.write("looked.quorl",
               before + "SAVE bare.svg\nPREVIEW x.svg a b CURSOR 5,9.1\nPREVIEW x.png a b d MARK ON\n" +
                   after);
  ASSERT_EQ(folder.run("quorl run plain.quorl -o plain.bdoc").exitCode, 0);
  const ProgramRun run = folder.run("quorl run looked.quorl -o looked.bdoc");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(folder.read("looked.bdoc"), folder.read("plain.bdoc"));
  EXPECT_GT(folder.read("x.svg").size(), folder.read("bare.svg").size() + 1000);
  EXPECT_TRUE(folder.has("x.png"));
}

TEST(PatternReports, TellWhatAPatternIs) {
  const ProgramFolder folder;
  folder.write("in.quorl",
               kHoles + "CENTERPATTERN a b d FULL OFF MARK ON AS p\nCENTERPATTERN EDIT p REMOVE d ADD d\n");
  ASSERT_EQ(folder.run("quorl run in.quorl -o a.bdoc").exitCode, 0);
  const auto report = nlohmann::json::parse(folder.run("quorl report --json a.bdoc").out);
  const auto& pattern = report.at("centers").at(0);
  EXPECT_EQ(pattern.at("kind"), "CENTERMARKPATTERN");
  EXPECT_EQ(pattern.at("type"), "polar");
  EXPECT_FALSE(pattern.at("fullPCD").get<bool>());
  EXPECT_TRUE(pattern.at("showCenterMark").get<bool>());
  EXPECT_TRUE(pattern.at("referenceEdge").is_null());
  std::multiset<std::string> keys;
  for (const auto& member : pattern.at("members")) keys.insert(member.at("key").get<std::string>());
  EXPECT_EQ(keys, (std::multiset<std::string>{"0", "1", "2"}));
  ASSERT_EQ(pattern.at("overshoots").size(), 1u);
  EXPECT_EQ(pattern.at("overshoots")[0].at("start"), 0.5);
  keys.clear();
  for (const auto& curve : pattern.at("curves")) keys.insert(curve.at("key").get<std::string>());
  for (const char* key : {"0", "1", "2", "MajorAxis"}) EXPECT_EQ(keys.count(key), 6u) << key;
  EXPECT_EQ(keys.size(), 4u * 6u + 2u + 1u);
}

} // namespace
