#include <gtest/gtest.h>

#include <algorithm>

#include "support/run_program.h"

namespace {

struct CommandLineCase {
  const char* name;
  const char* line;
  int exitCode;
  std::vector<std::string> out, err; // pieces
  std::vector<std::string> files;    // what the folder holds afterwards, all of it
};

std::ostream& operator<<(std::ostream& stream, const CommandLineCase& testCase) {
  return stream << testCase.name;
}

// plate.svg is the example, bad.svg no drawing; both stand in the folder beforehand and are left out of
// files.
const CommandLineCase kCases[] = {
    {"version", "quorl --version", 0, {"quorl 0."}, {}, {}},
    {"help", "quorl --help", 0, {"annotate", "report", "convert", "run"}, {}, {}},
    {"annotate help",
     "quorl annotate --help",
     0,
     {"Examples:", "--min-radius", "--arcs", "--set", "--out-dir"},
     {},
     {}},
    {"report help", "quorl report --help", 0, {"Examples:", "--json", "--unit", "--dpi"}, {}, {}},
    {"convert help", "quorl convert --help", 0, {"Examples:", "--fit-tolerance"}, {}, {}},
    {"run help", "quorl run --help", 0, {"Examples:", "CENTERMARK", "REASSOCIATE", "UNDO"}, {}, {}},

    {"no command", "quorl", 2, {}, {"subcommand"}, {}},
    {"unknown command", "quorl anotate plate.svg", 2, {}, {"anotate"}, {}},
    {"unknown option", "quorl convert --fast plate.svg a.bdoc", 2, {}, {"--fast"}, {}},
    {"missing argument", "quorl convert plate.svg", 2, {}, {"OUTPUT"}, {}},
    {"unknown unit", "quorl convert --unit furlong plate.svg a.bdoc", 2, {}, {"--unit"}, {}},
    {"no number", "quorl convert --dpi many plate.svg a.bdoc", 2, {}, {"--dpi"}, {}},
    {"negative radius", "quorl annotate plate.svg -o a.bdoc --min-radius -1", 2, {}, {"--min-radius"}, {}},
    {"radius that is no number",
     "quorl annotate plate.svg -o a.bdoc --min-radius nan",
     2,
     {},
     {"--min-radius", "nan", "expected 0 to"},
     {}},
    {"resolution that is no number",
     "quorl annotate plate.svg -o a.bdoc --dpi nan",
     2,
     {},
     {"--dpi", "expected 1 to 100000"},
     {}},
    {"more than a turn", "quorl annotate plate.svg -o a.bdoc --arcs 361", 2, {}, {"--arcs"}, {}},
    {"nothing to write",
     "quorl annotate plate.svg",
     2,
     {},
     {"nothing is to be written, expected --output"},
     {}},
    {"one output for two", "quorl annotate plate.svg bad.svg -o a.bdoc", 2, {}, {"expected --out-dir"}, {}},
    {"crossed limits",
     "quorl annotate plate.svg -o a.bdoc --min-radius 5 --max-radius 4",
     2,
     {},
     {"--max-radius"},
     {}},

    {"convert",
     "quorl convert plate.svg a.bdoc && quorl convert a.bdoc a.tdoc && quorl convert a.tdoc b.bdoc && cmp "
     "a.bdoc b.bdoc",
     0,
     {},
     {},
     {"a.bdoc", "a.tdoc", "b.bdoc"}},
    {"pictures",
     "quorl convert plate.svg a.PDF && quorl convert plate.svg a.png && quorl convert plate.svg a.svg && "
     "head -c 4 a.PDF",
     0,
     {"%PDF"},
     {},
     {"a.PDF", "a.png", "a.svg"}},
    {"same bytes",
     "quorl convert plate.svg a.png && quorl convert plate.svg b.png && cmp a.png b.png",
     0,
     {},
     {},
     {"a.png", "b.png"}},
    {"unknown ending",
     "quorl convert plate.svg plate.doc",
     1,
     {},
     {"plate.doc: can't be written by its ending, expected one of bdoc"},
     {}},
    {"unreadable ending",
     "quorl convert plate.pdf a.bdoc",
     1,
     {},
     {"plate.pdf: can't be read by its ending, expected one of bdoc, tdoc, svg"},
     {}},
    {"absent file", "quorl convert nowhere.svg a.bdoc", 1, {}, {"nowhere.svg"}, {}},
    {"absent drawing", "quorl report nowhere.bdoc", 1, {}, {"nowhere.bdoc"}, {}},
    {"no drawing", "quorl convert bad.svg a.bdoc", 1, {}, {"bad.svg:", "expected"}, {}},
    {"cut off drawing",
     "quorl convert plate.svg a.bdoc && head -c 700 a.bdoc >b.bdoc && quorl convert b.bdoc c.tdoc; c=$?; rm "
     "a.bdoc b.bdoc; (exit $c)",
     1,
     {},
     {"b.bdoc"},
     {}},
    {"folder that is none", "quorl convert plate.svg nowhere/a.bdoc", 1, {}, {"nowhere/a.bdoc"}, {}},

    {"report",
     "quorl report plate.svg",
     0,
     {"units: mm", "ZnDbCircle 7", "circles found: 10", "center objects: 0"},
     {},
     {}},
    {"report as data",
     "quorl report plate.svg --json",
     0,
     {"\"centers\": []", "\"ZnDbCircle\": 7", "\"deviation\""},
     {},
     {}},
    {"notes",
     "quorl annotate plate.svg -o a.bdoc",
     0,
     {"plate.svg: 7 center marks and 1 center mark pattern"},
     {},
     {"a.bdoc"}},
    {"lengths without unit",
     "quorl annotate bare.svg -o a.bdoc",
     0,
     {"bare.svg: ", "96 dpi"},
     {},
     {"a.bdoc"}},
    {"unit from the user",
     "quorl --quiet annotate --unit in bare.svg --report /dev/stdout -o a.bdoc",
     0,
     {"\"radius\": 76.19"},
     {},
     {"a.bdoc"}},
    {"converted onto itself",
     "ln -s plate.svg a.svg && quorl convert plate.svg ./a.svg; c=$?; rm a.svg; (exit $c)",
     2,
     {},
     {"./a.svg: would be written over plate.svg, expected a file that is not read"},
     {}},
    {"converted onto another name of itself",
     "ln plate.svg a.svg && quorl convert plate.svg a.svg; c=$?; rm a.svg; (exit $c)",
     2,
     {},
     {"a.svg: would be written over plate.svg"},
     {}},
    {"marked results over inputs",
     "quorl annotate plate.svg bare.svg --out-dir . -o .svg",
     2,
     {},
     {"written over"},
     {}},
    {"report over the input",
     "quorl annotate plate.svg -o a.bdoc --report plate.svg",
     2,
     {},
     {"written over"},
     {}},
    {"drawing marked over itself",
     "quorl convert plate.svg a.bdoc && quorl annotate a.bdoc -o $PWD/a.bdoc; c=$?; rm a.bdoc; (exit $c)",
     2,
     {},
     {"a.bdoc: would be written over a.bdoc"},
     {}},
    {"SVG that is asked to take its marks",
     "cp plate.svg a.svg && quorl annotate a.svg -o a.bdoc -o a.svg",
     0,
     {"a.svg: the marks go into the input itself"},
     {},
     {"a.bdoc", "a.svg"}},
    {"script on a drawing in place",
     "quorl convert plate.svg a.bdoc && echo 'CIRCLE 0,0 5' >a.quorl && quorl run a.quorl a.bdoc -o a.bdoc "
     "&& quorl "
     "report a.bdoc; c=$?; rm a.quorl; (exit $c)",
     0,
     {"ZnDbCircle 8"},
     {},
     {"a.bdoc"}},
    {"through a link",
     "touch b.bdoc && ln -s b.bdoc a.bdoc && quorl convert plate.svg a.bdoc && test -L a.bdoc && quorl "
     "report b.bdoc",
     0,
     {"ZnDbCircle 7"},
     {},
     {"a.bdoc", "b.bdoc"}},
    {"onto a folder",
     "mkdir a.bdoc && quorl convert plate.svg a.bdoc",
     1,
     {},
     {"a.bdoc: can't be put in place"},
     {}},
};

class CommandLine : public testing::TestWithParam<CommandLineCase> {};

TEST_P(CommandLine, DoesAndSaysWhatItShould) {
  const CommandLineCase& expected = GetParam();
  const ProgramFolder folder;
  std::filesystem::copy(QUORL_SOURCE_DIR "/examples/flange-plate.svg", folder.path() / "plate.svg");
  folder.write("bad.svg", "<svg xmlns='http://www.w3.org/2000/svg'>\n<circle r='3'\n</svg>\n");
  folder.write("bare.svg", "<svg xmlns='http://www.w3.org/2000/svg'><circle r='3' stroke='black'/></svg>\n");
  const ProgramRun run = folder.run(expected.line);
  EXPECT_EQ(run.exitCode, expected.exitCode) << run.out << run.err;
  EXPECT_TRUE(holdsAll(run.out, expected.out));
  EXPECT_TRUE(holdsAll(run.err, expected.err));
  if (expected.exitCode == 0) {
    EXPECT_EQ(run.err, "");
  }
  std::vector<std::string> files = folder.files();
  for (const char* input : {"plate.svg", "bad.svg", "bare.svg"}) std::erase(files, input);
  EXPECT_EQ(files, expected.files);
}

INSTANTIATE_TEST_SUITE_P(Lines, CommandLine, testing::ValuesIn(kCases));

TEST(CommandLine, QuietSaysNothingButFaults) {
  const ProgramFolder folder;
  const ProgramRun good = folder.run("quorl --quiet annotate $EXAMPLES/flange-plate.svg -o a.bdoc");
  EXPECT_EQ(good.exitCode, 0);
  EXPECT_EQ(good.out + good.err, "");
  const ProgramRun bad = folder.run("quorl annotate nowhere.svg -o b.bdoc --quiet");
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_EQ(bad.out, "");
  EXPECT_NE(bad.err, "");
}

} // namespace
