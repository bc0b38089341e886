#include "quorl/base/resource.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

const std::string kFolder = QUORL_BIN_DIR "/base_resources/";

TEST(Resource, TextsAreFoundByNumber) {
  const auto handle = ZnUtResource::loadDll(ZnString::fromUtf8(kFolder + "base_texts.dll"));
  ASSERT_NE(handle, nullptr);
  const ZnRxResourceInstance instance(handle);
  struct Case {
    unsigned number;
    bool found;
    const wchar_t* text;
  };
  const Case cases[] = {
      {7, true, L"seven"}, {2040, true, L"Ø %s"}, {9, true, L""}, {8, false, L""}, {11, false, L""}};
  for (const Case& c : cases) {
    ZnString text(L"before");
    EXPECT_EQ(text.loadString(instance, c.number), c.found) << c.number;
    EXPECT_EQ(text, c.text) << c.number;
  }
  EXPECT_TRUE(ZnUtResource::freeDll(handle));
  EXPECT_EQ(dlopen((kFolder + "base_texts.dll").c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(Resource, BackslashesSeparateFolders) {
  std::string file = kFolder + "base_texts.dll";
  std::replace(file.begin(), file.end(), '/', '\\');
  const auto handle = ZnUtResource::loadDll(ZnString::fromUtf8(file));
  EXPECT_NE(handle, nullptr);
  EXPECT_TRUE(ZnUtResource::freeDll(handle));
}

TEST(Resource, WhatIsNoResourceLibraryIsNotLoaded) {
  for (const char* name : {"base_no_texts.dll", "absent.dll"}) {
    EXPECT_EQ(ZnUtResource::loadDll(ZnString::fromUtf8(kFolder + name)), nullptr) << name;
    EXPECT_EQ(dlopen((kFolder + name).c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr) << name;
  }
  EXPECT_FALSE(ZnUtResource::freeDll(nullptr));
  EXPECT_EQ(ZnRxResourceInstance().text(7), nullptr);
}

} // namespace
