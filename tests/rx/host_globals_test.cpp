#include "quorl/rx/host_globals.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

TEST(HostGlobals, FoldersAreThoseOfThisBuild) {
  EXPECT_TRUE(fs::equivalent(Quorl::programFolder().utf8(), QUORL_BIN_DIR));
  EXPECT_TRUE(fs::exists(fs::path(Quorl::libraryFolder().utf8()) / "libquorl.so"));
}

TEST(HostGlobals, TheResourceFolderReplacesTheTextOnlyWhereItExists) {
  const fs::path folder = fs::path(Quorl::libraryFolder().utf8()) / "xx-Test";
  const ZnString usual = hostLanguage();
  EXPECT_EQ(usual, L"en-US");
  setHostLanguage(L"xx-Test");
  fs::remove_all(folder);
  ZnString text(L"en-US\\");
  zndbGetResourceFolder(text);
  EXPECT_EQ(text, L"en-US\\");
  fs::create_directory(folder);
  zndbGetResourceFolder(text);
  EXPECT_EQ(text.utf8(), folder.string() + "/");
  fs::remove(folder);
  setHostLanguage(L"");
  zndbGetResourceFolder(text);
  EXPECT_EQ(text.utf8(), folder.string() + "/");
  setHostLanguage(usual);
}

} // namespace
