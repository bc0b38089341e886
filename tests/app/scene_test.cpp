// Each folder of tests/scenes is a scene: a script, or a picture that annotate is given, a note of what it
// shows, and the dump of the drawing that it leaves. A scene that fails leaves its actual dump and picture
// beside the expected one.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "support/file_content.h"
#include "support/run_program.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> scenes() {
  std::vector<fs::path> folders;
  for (const fs::directory_entry& entry : fs::directory_iterator(QUORL_SOURCE_DIR "/tests/scenes"))
    if (entry.is_directory()) folders.push_back(entry.path());
  std::sort(folders.begin(), folders.end());
  return folders;
}

class Scene : public testing::TestWithParam<fs::path> {};

TEST_P(Scene, EndsAsExpected) {
  const fs::path scene = GetParam();
  ASSERT_TRUE(fs::exists(scene / "note.txt"));
  const ProgramFolder folder;
  const fs::path drawing = scene / "drawing.svg";
  const std::string command = fs::exists(drawing) ? "annotate --center-lines '" + drawing.string() + "'"
                                                  : "run '" + (scene / "script.quorl").string() + "'";
  const ProgramRun run = folder.run("quorl " + command + " -o a.bdoc -o a.svg");
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const std::string actual = folder.run("quorl report a.bdoc").out;
  const bool same = actual == contentOf(scene / "expected.txt");
  EXPECT_TRUE(same) << contentOf(scene / "note.txt") << "See actual.txt and actual.svg in " << scene;
  if (same) {
    fs::remove(scene / "actual.txt");
    fs::remove(scene / "actual.svg");
  } else {
    std::ofstream(scene / "actual.txt", std::ios::binary) << actual;
    fs::copy_file(folder.path() / "a.svg", scene / "actual.svg", fs::copy_options::overwrite_existing);
  }
  // Through the text format the drawing is the same.
  EXPECT_EQ(folder.run("quorl convert a.bdoc a.tdoc && quorl report a.tdoc").out, actual);
}

std::string sceneName(const testing::TestParamInfo<fs::path>& info) {
  std::string name = info.param.filename().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Folder, Scene, testing::ValuesIn(scenes()), sceneName);

TEST(Scenes, AreThere) { EXPECT_GE(scenes().size(), 8u); }

} // namespace
