// Center lines and edge extensions as a user meets them: refusals, the report, and the slots and strips of a
// drawing.
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "support/run_program.h"

namespace {

using Json = nlohmann::json;

TEST(LineCommands, SayWhatIsWrong) {
  const std::string drawn =
      "LINE 0,0 9,0 AS a\nLINE 0,3 9,3 AS b\nCIRCLE 50,0 5 AS c\nLINE 0,0 0,2 AS corner\n"
      "LINE 0,0,5 0,9,5 AS skew\nCENTERLINE a b AS line\n";
  const std::string needs = "a center line needs two straight edges";
  const std::string cases[][2] = {
      {"CENTERLINE c a", "7: CENTERLINE: " + needs},
      {"CENTERLINE a", needs},
      {"CENTERLINE a b corner", needs},
      {"CENTERLINE a skew", "the edges do not lie in one plane"},
      {"CENTERLINE a a", "the edges lie one upon the other"},
      {"CENTERLINE a@here b", "\"a@here\", expected an edge with a pick, name@x,y"},
      {"CENTERLINE a@1e300,0 b", "a@1e300,0 is out of range"},
      {"CENTERLINE z@1,1 b", "nothing is named \"z\""},
      {"EDGEEXTENSION a c", "an edge extension needs two straight edges"},
      {"EDGEEXTENSION a b", "the edges run side by side and never meet"},
      {"EDGEEXTENSION a skew", "the edges do not lie in one plane"},
      {"EDGEEXTENSION a corner", "an edge reaches the crossing by itself"},
      {"REASSOCIATE line a", "7: REASSOCIATE: " + needs},
      {"REASSOCIATE line a c", needs},
  };
  for (const auto& [command, said] : cases) {
    const ProgramFolder folder;
    folder.write("s.quorl", drawn + command);
    const ProgramRun run = folder.run("quorl run s.quorl -o out.bdoc");
    EXPECT_NE(run.exitCode, 0) << command;
    EXPECT_TRUE(holdsAll(run.err, {said})) << command;
    EXPECT_FALSE(folder.has("out.bdoc")) << command;
  }
}

TEST(LineCommands, TheReportTellsLengthsAsTheyCount) {
  const ProgramFolder folder;
  folder.write("s.quorl", "SETVAR CENTEREXE 2\nLINE 0,0 10,0 AS a\nLINE 0,4 10,4 AS b\nCENTERLINE a b\n"
                          "LINE 40,0 50,0 AS c\nLINE 38,3 38,9 AS d\nEDGEEXTENSION c d\n");
  ASSERT_EQ(folder.run("quorl run s.quorl -o a.bdoc").exitCode, 0);
  const Json centers = Json::parse(folder.run("quorl report a.bdoc --json").out)["centers"];
  ASSERT_EQ(centers.size(), 2u);
  EXPECT_EQ(centers[0]["kind"], "CENTERLINE");
  for (const char* length : {"startExtension", "endExtension"}) EXPECT_EQ(centers[0][length], 5.0);
  for (const char* length : {"startOvershoot", "endOvershoot"}) EXPECT_EQ(centers[0][length], 2.0);
  EXPECT_EQ(centers[0]["edges"].size(), 2u);
  EXPECT_EQ(centers[0]["curves"][0]["end"], Json({12.0, 2.0, 0.0}));
  EXPECT_EQ(centers[1]["kind"], "EDGEEXTENSION");
  EXPECT_EQ(centers[1]["curves"].size(), 2u);
  EXPECT_FALSE(centers[1].contains("startExtension"));
}

TEST(LineCommands, SlotsAndStripsGetLinesWhenAskedFor) {
  const std::string whole = "<path d='M30 30 H80 A5 5 0 0 1 80 40 H30 A5 5 0 0 1 30 30 Z'/>";
  const struct {
    const char* name;
    std::string content;
    const char* options;
    size_t marks, slots, strips;
  } cases[] = {
      {"outline", whole, "--center-lines", 2, 1, 0},
      {"not asked for", whole, "", 2, 0, 0},
      {"strips alone", whole, "--strips", 2, 0, 0},
      {"rounded rectangle", "<rect x='9' y='9' width='60' height='10' rx='5'/>", "--center-lines", 2, 1, 0},
      {"loose pieces",
       "<path d='M30 30 H80'/><path d='M80 40 H30'/><path d='M80 30 A5 5 0 0 1 80 40'/><path d='M30 40 A5 5 "
       "0 0 1 30 30'/>",
       "--center-lines", 2, 1, 0},
      {"ends in halves",
       "<path d='M30 30 H80 A5 5 0 0 1 85 35 A5 5 0 0 1 80 40 H30 A5 5 0 0 1 25 35 A5 5 0 0 1 30 30 Z'/>",
       "--center-lines", 2, 1, 0},
      {"marks that were left out", whole, "--center-lines --arcs 200", 2, 1, 0},
      {"too small", whole, "--center-lines --min-radius 6", 0, 0, 0},
      {"groove", whole + "<path d='M30 28 H80 A7 7 0 0 1 80 42 H30 A7 7 0 0 1 30 28 Z'/>", "--center-lines",
       2, 1, 0},
      {"strip", "<rect x='9' y='9' width='60' height='10'/>", "--strips", 0, 0, 1},
      {"strip, lines alone", "<rect x='9' y='9' width='60' height='10'/>", "--center-lines", 0, 0, 0},
      {"turned in a group",
       "<g transform='rotate(30) scale(2)'>" + whole + "<rect x='99' y='9' width='40' height='9'/></g>",
       "--center-lines --strips", 2, 1, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const ProgramFolder folder;
    folder.write("in.svg",
                 "<svg xmlns='http://www.w3.org/2000/svg' width='200mm' height='200mm' viewBox='0 0 200 200' "
                 "fill='none' stroke='black'>" +
                     c.content + "</svg>");
    for (const char* pass : {"in.svg -o a.bdoc", "a.bdoc -o b.bdoc"}) {
      const ProgramRun run =
          folder.run("quorl annotate " + std::string(pass) + " --report r.json " + c.options);
      ASSERT_EQ(run.exitCode, 0) << run.err;
      const Json report = Json::parse(folder.read("r.json"));
      EXPECT_EQ(report["slots"].size(), c.slots);
      EXPECT_EQ(report["strips"].size(), c.strips);
      // Nothing is made a second time.
      EXPECT_EQ(report["centers"].size(), c.marks + c.slots + c.strips) << pass;
      for (const char* finds : {"slots", "strips"})
        for (const Json& find : report[finds]) {
          EXPECT_EQ(find["isNew"], pass[0] == 'i');
          EXPECT_EQ(find["edges"].size(), 2u);
          EXPECT_FALSE(find["evidence"].get<std::string>().empty());
        }
    }
  }
}

} // namespace
