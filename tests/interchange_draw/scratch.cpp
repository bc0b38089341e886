#include "interchange_draw/scratch.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

namespace interchange_test {

namespace {

// Gone when the program ends.
struct ScratchFolder {
  std::filesystem::path path =
      std::filesystem::path(testing::TempDir()) / ("interchange_draw_" + std::to_string(::getpid()));
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

} // namespace

std::string scratchPath(const std::string& name) {
  static const ScratchFolder scratch;
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::filesystem::path folder = scratch.path / test->name();
  std::filesystem::create_directories(folder);
  return (folder / name).string();
}

} // namespace interchange_test
