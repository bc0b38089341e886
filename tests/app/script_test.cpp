#include <gtest/gtest.h>

#include <algorithm>

#include "support/run_program.h"

namespace {

struct FaultCase {
  const char* name;
  const char* script;
  int line;
  const char* said;
};

std::ostream& operator<<(std::ostream& stream, const FaultCase& testCase) { return stream << testCase.name; }

const FaultCase kFaults[] = {
    {"unknown command", "CIRCL 0,0 5\n", 1, "CIRCL is no command, expected"},
    {"comment and blank lines count", "# first\n\nLINE 0,0 1,1\nFOO\n", 4, "FOO is no command"},
    {"too few words", "CIRCLE 0,0\n", 1, "CIRCLE: the line ends too early, expected a radius above 0"},
    {"no words", "LINE\n", 1, "LINE: the line ends too early, expected a point x,y"},
    {"too many words", "LINE 0,0 1,1 2,2\n", 1, "LINE: \"2,2\", expected the end of the line"},
    {"no point", "LINE 0;0 1,1\n", 1, "LINE: \"0;0\", expected a point x,y"},
    {"point of four", "LINE 0,0,0,0 1,1\n", 1, "expected a point x,y"},
    {"infinite coordinate", "LINE inf,0 1,1\n", 1, "expected a point x,y"},
    {"line without length", "LINE 1,1 1,1\n", 1, "LINE: both ends are one point"},
    {"negative radius", "CIRCLE 0,0 -5\n", 1, "CIRCLE: -5, expected a radius above 0"},
    {"huge coordinate", "CIRCLE 1e308,1e308 5\n", 1,
     "CIRCLE: 1e308,1e308 is out of range, expected numbers from"},
    {"huge radius", "CIRCLE 0,0 1e308\n", 1, "CIRCLE: 1e308 is out of range, expected numbers from"},
    {"next to no radius", "CIRCLE 0,0 1e-300\n", 1, "is out of range, expected a radius above 0, from 1e-09"},
    {"huge way", "CIRCLE 0,0 5 AS c\nCOPY c 1e300,0\n", 2, "COPY: 1e300,0 is out of range"},
    {"out of range in steps", "CIRCLE 0,0 5 AS c\nMOVE c 9e8,0\nMOVE c 9e8,0\n", 3,
     "the value is out of range"},
    {"to nothing in steps", "CIRCLE 0,0 5 AS c\nSCALE c 0,0 1e-8\nSCALE c 0,0 1e-8\n", 3, "out of range"},
    {"bulge beyond measure", "POLYLINE 0,0 BULGE 1e9 9,0\n", 1, "POLYLINE: the value is out of range"},
    {"huge value", "SETVAR CENTEREXE 1e308\n", 1, "SETVAR: 1e308 is out of range"},
    {"huge factor", "SETVAR CENTERCROSSSIZE 1e300x\n", 1, "SETVAR: 1e300x is out of range"},
    {"arc without a span", "ARC 0,0 5 30 30\n", 1, "ARC: both angles are one, expected an arc that"},
    {"arc of a whole turn", "ARC 0,0 5 -90 270\n", 1, "ARC: both angles are one"},
    {"entity given twice", "CIRCLE 0,0 5 AS c\nERASE c c\n", 2, "ZnDbCircle is given twice, expected each"},
    {"pick far from every edge", "CIRCLE 0,0 5\nCIRCLE 100,0 5\nCENTERMARK 50,0\n", 3,
     "no edge is near 50,0: the nearest is 45 away, expected a point within 1.1"},
    {"number with a tail", "CIRCLE 0,0 5mm\n", 1, "CIRCLE: \"5mm\""},
    {"chain of one point", "POLYLINE 0,0\n", 1,
     "POLYLINE: the line ends too early, expected at least two points"},
    {"open quote", "TEXT 0,0 3 \"open\n", 1, "closing quote"},
    {"name that is none", "CIRCLE 0,0 5 AS 5\n", 1, "CIRCLE: AS without a name"},
    {"name for nothing", "CIRCLE 0,0 5\nSETVAR LTSCALE 2 AS x\n", 2, "SETVAR: the line makes 0 entities"},
    {"unknown name", "MOVE hole 1,0\n", 1, "MOVE: nothing is named \"hole\", expected an entity"},
    {"unknown handle", "MOVE #FFFF 1,0\n", 1, "MOVE: the drawing has no #FFFF"},
    {"handle of no entity", "MOVE #1 1,0\n", 1, "MOVE: #1 is no entity"},
    {"nothing to pick", "MOVE 5,5 1,0\n", 1, "MOVE: the drawing has no edge to pick"},
    {"erased entity", "CIRCLE 0,0 5 AS c\nERASE c\nMOVE c 1,0\n", 3, "MOVE: c is erased"},
    {"locked layer", "CIRCLE 0,0 5 AS c\nLAYER 0 LOCK\nMOVE c 1,0\n", 3,
     "ZnDbCircle: it is on a locked layer, expected one on"},
    {"unknown layer state", "LAYER A SHUT\n", 1, "LAYER: \"SHUT\", expected ON, OFF"},
    {"name with a bracket", "LAYER a<b\n", 1, "LAYER: layer \"a<b\": the name has characters"},
    {"stretched circle", "CIRCLE 0,0 5 AS c\nSTRETCH c 5,0 6,0\n", 2, "ZnDbCircle has no vertices to move"},
    {"unknown space", "SPACE OUTER\n", 1, "SPACE: \"OUTER\", expected MODEL or PAPER"},
    {"viewport in the model", "VIEWPORT 0,0 9 9 0,0 1\n", 1, "VIEWPORT: a viewport stands in paper space"},
    {"edge through no viewport", "CIRCLE 0,0 5 AS c\nCENTERMARK c/c\n", 2, "ZnDbCircle is no viewport"},
    {"unknown block", "INSERT b 0,0\n", 1, "INSERT: there is no block \"b\""},
    {"block of that name", "CIRCLE 0,0 5 AS c\nCIRCLE 9,0 5 AS d\nBLOCK b 0,0 c\nBLOCK b 0,0 d\n", 4,
     "BLOCK: block \"b\": the name is taken"},
    {"unknown variable", "SETVAR NOSUCH 1\n", 1, "SETVAR: There is no variable NOSUCH"},
    {"value out of range", "SETVAR LTSCALE 0\n", 1, "SETVAR: "},
    {"nothing to undo", "UNDO\n", 1, "UNDO: there is nothing to undo, expected fewer steps"},
    {"more to undo than there is", "CIRCLE 0,0 5\nUNDO 2\n", 2, "UNDO: there is nothing to undo"},
    {"nothing to redo", "CIRCLE 0,0 5\nUNDO\nCIRCLE 0,0 6\nREDO\n", 4, "REDO: there is nothing to redo"},
    {"half an undo", "CIRCLE 0,0 5\nUNDO 0.5\n", 2, "UNDO: 0.5, expected a whole number"},
    {"mark on a line", "LINE 0,0 9,0 AS l\nCENTERMARK l\n", 2, "CENTERMARK: the edge is no circle or arc"},
    {"mark on one edge of many", "RECTANGLE 0,0 9,9 AS r\nCENTERMARK r\n", 2,
     "has 4 edges of its own, expected a point"},
    {"mark on a mark", "CIRCLE 0,0 5\nCENTERMARK 5,0 AS m\nCENTERMARK m\n", 3, "has 0 edges of its own"},
    {"second of two edges", "CIRCLE 0,0 5 AS c\nLINE 9,0 9,9 AS l\nCENTERMARK c l\n", 3,
     "CENTERMARK: the edge is no circle or arc"},
    {"circle is no mark", "CIRCLE 0,0 5 AS c\nDISASSOCIATE c\n", 2, "is no center object"},
    {"circle is no mark to tie", "CIRCLE 0,0 5 AS c\nREASSOCIATE c c\n", 2, "is no center object"},
    {"tie to a line", "CIRCLE 0,0 5 AS c\nLINE 9,0 9,9 AS l\nCENTERMARK c AS m\nREASSOCIATE m l\n", 4,
     "the edge is no circle or arc"},
    {"save to a format that is none", "CIRCLE 0,0 5\nSAVE a.doc\n", 2,
     "SAVE: a.doc: can't be written by its ending"},
};

class ScriptFault : public testing::TestWithParam<FaultCase> {};

TEST_P(ScriptFault, StopsWithItsPlaceAndReasonAndSavesNothing) {
  const ProgramFolder folder;
  folder.write("in.quorl", GetParam().script);
  const std::string place = "in.quorl:" + std::to_string(GetParam().line) + ": ";
  const ProgramRun run = folder.run("quorl run in.quorl -o out.bdoc");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err.rfind(place, 0), 0u) << run.err;
  EXPECT_TRUE(holdsAll(run.err, {GetParam().said}));
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"in.quorl"}));
}

INSTANTIATE_TEST_SUITE_P(Lines, ScriptFault, testing::ValuesIn(kFaults));

struct ListCase {
  const char* name;
  const char* script;
  std::vector<std::string> listed; // pieces, after a closing LIST
};

std::ostream& operator<<(std::ostream& stream, const ListCase& testCase) { return stream << testCase.name; }

const ListCase kLists[] = {
    {"line", "LINE 1,2 3,4", {"ZnDbLine  layer \"0\"  from 1,2 to 3,4"}},
    {"circle", "circle 1,2 3", {"ZnDbCircle  layer \"0\"  from -2,-1 to 4,5"}},
    {"arc", "ARC 0,0 5 0 90", {"ZnDbArc  layer \"0\"  from 0,0 to 5,5"}},
    {"polyline with an arc", "POLYLINE 0,0 BULGE 1 10,0", {"ZnDbPolyline  layer \"0\"  from 0,-5 to 10,0"}},
    {"rectangle", "RECTANGLE 9,9 1,2", {"ZnDbPolyline  layer \"0\"  from 1,2 to 9,9"}},
    {"text", "TEXT 1,2 3 \"two words\"", {"ZnDbText"}},
    {"move", "CIRCLE 0,0 5 AS c\nMOVE c 10,1", {"from 5,-4 to 15,6"}},
    {"move by point",
     "CIRCLE 0,0 5\nCIRCLE 50,0 5\nMOVE 5.2,0.1 0,100",
     {"from -5,95 to 5,105", "from 45,-5 to 55,5"}},
    {"flat bulge", "POLYLINE 0,0 BULGE 1e-300 10,0", {"from 0,0 to 10,0"}},
    {"rotate", "LINE 0,0 10,0 AS l\nROTATE l 0,0 90", {"from 0,0 to 0,10"}},
    {"scale", "CIRCLE 2,0 1 AS c\nSCALE c 0,0 3", {"from 3,-3 to 9,3"}},
    {"byte order mark", "\xef\xbb\xbfLINE 0,0 9,4", {"from 0,0 to 9,4"}},
    {"stretched line", "LINE 0,0 9,0 AS l\nSTRETCH l 8,1 9,4\n", {"from 0,0 to 9,4"}},
    {"stretched polyline", "POLYLINE 0,0 9,0 9,9 AS p\nSTRETCH p 9,9 2,12\n", {"from 0,0 to 9,12"}},
    {"mirror", "CIRCLE 2,1 1 AS c\nMIRROR c 0,0 0,9", {"from -3,0 to -1,2"}},
    {"copy", "CIRCLE 0,0 1 AS c\nCOPY c 10,0 AS d\nMOVE d 0,10", {"from -1,-1 to 1,1", "from 9,9 to 11,11"}},
    {"undo and redo", "CIRCLE 0,0 1\nCIRCLE 9,0 1\nUNDO 2\nREDO", {"from -1,-1 to 1,1"}},
    {"block",
     "CIRCLE 5,5 1 AS c\nBLOCK b 5,5 c\nINSERT b 20,0 2 AS i",
     {"ZnDbBlockReference  layer \"0\"  from 18,-2 to 22,2"}},
    {"layer", "LAYER Holes\nCIRCLE 0,0 1", {"ZnDbCircle  layer \"Holes\""}},
    {"picks among what has changed",
     "CIRCLE 0,0 5\nCIRCLE 50,0 5\nMOVE 5,0 0,40\nMOVE 5,40 0,10\nUNDO\nMOVE 5,40 0,1\nERASE 55,0\nUNDO",
     {"from -5,36 to 5,46", "from 45,-5 to 55,5"}},
    {"picks of what follows",
     "CIRCLE 0,0 5 AS c\nCENTERMARK c\nCIRCLE 50,0 5\nMOVE c 20,0\nERASE 20,0.1",
     {"ZnDbCircle  layer \"0\"  from 15,-5 to 25,5", "ZnDbCircle  layer \"0\"  from 45,-5 to 55,5"}},
    {"several at once",
     "CIRCLE 0,0 1 AS a\nCIRCLE 9,0 1 AS b\nMOVE a b 0,5",
     {"from -1,4 to 1,6", "from 8,4 to 10,6"}},
    {"comments", "# one\n  CIRCLE 0,0 1 # two\n\t# three", {"from -1,-1 to 1,1"}},
};

class ScriptList : public testing::TestWithParam<ListCase> {};

TEST_P(ScriptList, ShowsWhatTheCommandsMade) {
  const ProgramFolder folder;
  folder.write("in.quorl", std::string(GetParam().script) + "\nLIST\n");
  const ProgramRun run = folder.run("quorl run in.quorl");
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_TRUE(holdsAll(run.out, GetParam().listed));
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), static_cast<long>(GetParam().listed.size()))
      << run.out;
}

INSTANTIATE_TEST_SUITE_P(Lines, ScriptList, testing::ValuesIn(kLists));

TEST(Script, SavesTheDrawingAsItWasAtTheLine) {
  const ProgramFolder folder;
  folder.write("in.quorl", "CIRCLE 0,0 5 AS c\nSAVE before.tdoc\nERASE c\n");
  ASSERT_EQ(folder.run("quorl run in.quorl -o after.tdoc -o after.svg").exitCode, 0);
  EXPECT_TRUE(holdsAll(folder.run("quorl report before.tdoc").out, {"ZnDbCircle 1"}));
  EXPECT_EQ(folder.run("quorl report after.tdoc").out.find("ZnDbCircle"), std::string::npos);
  EXPECT_TRUE(folder.has("after.svg"));
}

TEST(Script, AFaultTakesBackEarlierSaves) {
  const ProgramFolder folder;
  folder.write("kept.bdoc", "what stood there");
  folder.write("in.quorl", "CIRCLE 0,0 1\nSAVE early.bdoc\nSAVE kept.bdoc\nFOO\n");
  EXPECT_EQ(folder.run("quorl run in.quorl").exitCode, 1);
  EXPECT_EQ(folder.files(), (std::vector<std::string>{"in.quorl", "kept.bdoc"}));
  EXPECT_EQ(folder.read("kept.bdoc"), "what stood there");
}

TEST(Script, HandlesAndNamesMeanTheSame) {
  const ProgramFolder folder;
  folder.write("first.quorl", "CIRCLE 0,0 5 AS c\nLIST c\n");
  const std::string listed = folder.run("quorl run first.quorl -o a.bdoc").out;
  const std::string handle = listed.substr(0, listed.find(' '));
  folder.write("second.quorl", "MOVE " + handle + " 10,0\nLIST " + handle + " # it moved\n");
  EXPECT_TRUE(holdsAll(folder.run("quorl run second.quorl a.bdoc").out,
                       {handle + " ZnDbCircle", "from 5,-5 to 15,5"}));
}

TEST(Script, ExamplesWork) {
  const ProgramFolder folder;
  EXPECT_EQ(folder.run("quorl run $EXAMPLES/make-a-flange.quorl -o flange.bdoc -o flange.pdf").exitCode, 0);
  EXPECT_TRUE(holdsAll(folder.run("quorl report flange.bdoc").out, {"center objects: 5"}));
  ASSERT_EQ(folder.run("quorl annotate $EXAMPLES/flange-plate.svg -o plate.bdoc").exitCode, 0);
  const ProgramRun moved =
      folder.run("quorl run $EXAMPLES/move-a-hole.quorl plate.bdoc -o moved.bdoc -o moved.svg");
  EXPECT_EQ(moved.exitCode, 0) << moved.err;
  EXPECT_TRUE(holdsAll(folder.run("quorl report moved.bdoc").out,
                       {"center 124,92  radius 2.5", "CENTERMARKPATTERN follows"}));
  const ProgramRun sheet = folder.run("quorl run $EXAMPLES/pattern-sheet.quorl -o sheet.bdoc");
  EXPECT_EQ(sheet.exitCode, 0) << sheet.err;
  EXPECT_TRUE(holdsAll(folder.run("quorl report sheet.bdoc").out, {"center objects: 15"}));
  ASSERT_EQ(folder.run("quorl run $EXAMPLES/center-line-sheet.quorl -o lines.bdoc").exitCode, 0);
  EXPECT_TRUE(holdsAll(folder.run("quorl report lines.bdoc").out, {"center objects: 19"}));
  EXPECT_TRUE(holdsAll(folder.run("quorl annotate $EXAMPLES/sheet-of-parts.svg -o parts.bdoc").out,
                       {"14 center marks and 8 center mark patterns"}));
}

} // namespace
