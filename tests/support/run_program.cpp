#include "support/run_program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "support/file_content.h"

namespace fs = std::filesystem;

ProgramFolder::ProgramFolder() {
  static int count = 0;
  path_ =
      fs::path(testing::TempDir()) / ("quorl-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
  fs::create_directories(path_);
}

ProgramFolder::~ProgramFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

ProgramRun ProgramFolder::run(const std::string& commandLine) const {
  return runWith(QUORL_BIN_DIR "/quorl", commandLine);
}

ProgramRun ProgramFolder::runWith(const std::string& program, const std::string& commandLine) const {
  const fs::path out = path_.string() + ".out", err = path_.string() + ".err";
  const std::string shell = "cd '" + path_.string() +
                            "' && EXAMPLES='" QUORL_SOURCE_DIR "/examples' SCENES='" QUORL_SOURCE_DIR
                            "/tests/scenes' && quorl() { '" +
                            program + "' \"$@\"; } && { " + commandLine + "\n} >'" + out.string() + "' 2>'" +
                            err.string() + "'";
  const int status = std::system(shell.c_str());
  ProgramRun run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(out), contentOf(err)};
  fs::remove(out);
  fs::remove(err);
  return run;
}

void ProgramFolder::write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
}

std::string ProgramFolder::read(const std::string& name) const { return contentOf(path_ / name); }

std::vector<std::string> ProgramFolder::files() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_))
    if (entry.is_regular_file()) names.push_back(entry.path().lexically_relative(path_).string());
  std::sort(names.begin(), names.end());
  return names;
}

bool holdsAll(const std::string& text, const std::vector<std::string>& pieces) {
  for (const std::string& piece : pieces) {
    if (text.find(piece) != std::string::npos) continue;
    ADD_FAILURE() << "\"" << piece << "\" is missing in:\n" << text;
    return false;
  }
  return true;
}
