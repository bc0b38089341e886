#include <gtest/gtest.h>

#include "support/run_program.h"

namespace {

namespace fs = std::filesystem;

// A copy of the program and the host, with those modules only that a test adds.
class Bare {
public:
  explicit Bare(std::initializer_list<const char*> modules) {
    fs::create_directory(place_);
    for (const char* file : {"quorl", "libquorl.so", "quorl.lin"}) take(file);
    for (const char* file : modules) take(file);
  }
  ProgramRun run(const std::string& line) const {
    return folder_.runWith((place_ / "quorl").string(),
                           "export LD_LIBRARY_PATH='" + place_.string() + "'; " + line);
  }
  const ProgramFolder& folder() const { return folder_; }

private:
  void take(const std::string& file) { fs::copy_file(fs::path(QUORL_BIN_DIR) / file, place_ / file); }
  ProgramFolder folder_;
  fs::path place_ = folder_.path() / "bare";
};

struct MissingCase {
  const char* name;
  std::initializer_list<const char*> modules;
  const char* missing;
};

const MissingCase kMissing[] = {
    {"no module", {}, "ZnDbTorvi.lyx"},
    {"no companion", {"ZnDbTorvi.lyx"}, "ZnTorvi.pyx"},
};

class WithoutModules : public testing::TestWithParam<MissingCase> {};

TEST_P(WithoutModules, DrawingsOpenConvertShowAndSave) {
  const Bare bare(GetParam().modules);
  const ProgramFolder whole;
  const std::string drawing = "'" + (whole.path() / "a.bdoc").string() + "'";
  ASSERT_EQ(whole.run("quorl annotate $EXAMPLES/flange-plate.svg -o a.bdoc -o a.png").exitCode, 0);
  EXPECT_EQ(bare.run("quorl convert " + drawing + " b.tdoc && quorl convert b.tdoc b.bdoc").exitCode, 0);
  EXPECT_EQ(bare.run("quorl convert b.bdoc b.png && quorl convert $EXAMPLES/flange-plate.svg c.svg").exitCode,
            0);
  // The marks show, and come back as themselves where their module is.
  EXPECT_EQ(bare.folder().read("b.png"), whole.read("a.png"));
  const std::string back = "'" + (bare.folder().path() / "b.bdoc").string() + "'";
  EXPECT_EQ(whole.run("quorl report " + back).out, whole.run("quorl report a.bdoc").out);
  bare.folder().write("draw.quorl", "CIRCLE 0,0 5 AS c\nMOVE c 5,0\nLIST\n");
  EXPECT_EQ(bare.run("quorl run draw.quorl -o d.bdoc").exitCode, 0);
}

TEST_P(WithoutModules, CommandsSayWhatIsMissing) {
  const Bare bare(GetParam().modules);
  bare.folder().write("mark.quorl", "CIRCLE 0,0 5 AS c\nCENTERMARK c\n");
  const ProgramRun annotate = bare.run("quorl annotate $EXAMPLES/flange-plate.svg -o a.bdoc");
  EXPECT_EQ(annotate.exitCode, 1);
  EXPECT_TRUE(holdsAll(annotate.err, {GetParam().missing}));
  const ProgramRun script = bare.run("quorl run mark.quorl -o a.bdoc");
  EXPECT_EQ(script.exitCode, 1);
  EXPECT_TRUE(holdsAll(script.err, {"mark.quorl:2: CENTERMARK: ", GetParam().missing}));
  EXPECT_FALSE(bare.folder().has("a.bdoc"));
  const ProgramRun report = bare.run("quorl report $EXAMPLES/flange-plate.svg");
  EXPECT_EQ(report.exitCode, 0);
  EXPECT_TRUE(holdsAll(report.err, {GetParam().missing}));
  EXPECT_TRUE(holdsAll(report.out, {"ZnDbCircle 7", "center objects: not known"}));
}

INSTANTIATE_TEST_SUITE_P(Files, WithoutModules, testing::ValuesIn(kMissing),
                         [](const auto& test) { return test.index == 0 ? "Module" : "Companion"; });

} // namespace
