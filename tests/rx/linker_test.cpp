#include "quorl/rx/dynamic_linker.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "quorl/rx/print.h"
#include "quorl/rx/registry.h"
#include "quorl/rx/services.h"

namespace {

const std::string kFolder = QUORL_BIN_DIR "/rx_modules";

ZnString pathOf(const ZnString& module) { return ZnString::fromUtf8(kFolder + "/" + module.utf8()); }

bool isInProcess(const ZnString& module) {
  void* library = dlopen(pathOf(module).utf8().c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library) dlclose(library);
  return library != nullptr;
}

class Linker : public testing::Test {
protected:
  void SetUp() override {
    usualPath_ = linker_.modulePath();
    linker_.setModulePath({L"/nowhere", ZnString::fromUtf8(kFolder)});
    usualSink_ = znutSetPrintSink([this](const ZnString& text) { told_ += text; });
  }
  void TearDown() override {
    znrxUnloadAllModules();
    EXPECT_TRUE(linker_.modules().empty());
    znutSetPrintSink(usualSink_);
    linker_.setModulePath(usualPath_);
  }
  std::string takeTold() { return std::exchange(told_, ZnString()).utf8(); }

  ZnRxDynamicLinker& linker_ = ZnRxDynamicLinker::instance();
  std::vector<ZnString> usualPath_;
  ZnPrintSink usualSink_;
  ZnString told_;
};

TEST_F(Linker, LoadUnloadAndLoadAgainLeaveNothing) {
  for (int round = 0; round < 3; ++round) {
    ASSERT_EQ(znrxLoadModule(L"good.lyx"), Quorl::eOk) << linker_.lastError().utf8();
    EXPECT_TRUE(znrxModuleIsLoaded(L"good.lyx"));
    EXPECT_TRUE(znrxServiceIsRegistered(L"goodService"));
    EXPECT_NE(znrxFindZnRxClass(L"goodClass"), nullptr);
    EXPECT_EQ(takeTold(), "good 1;");
    ASSERT_EQ(znrxUnloadModule(L"good.lyx"), Quorl::eOk) << linker_.lastError().utf8();
    EXPECT_EQ(takeTold(), "good 2;");
    EXPECT_FALSE(znrxModuleIsLoaded(L"good.lyx"));
    EXPECT_FALSE(isInProcess(L"good.lyx"));
    EXPECT_FALSE(znrxServiceIsRegistered(L"goodService"));
    EXPECT_EQ(znrxFindZnRxClass(L"goodClass"), nullptr);
  }
}

TEST_F(Linker, ALoadedModuleIsNotLoadedTwice) {
  ASSERT_EQ(znrxLoadModule(L"good.lyx"), Quorl::eOk);
  EXPECT_EQ(znrxLoadModule(L"good.lyx"), Quorl::eOk);
  EXPECT_EQ(znrxLoadModule(pathOf(L"good.lyx")), Quorl::eOk);
  EXPECT_EQ(takeTold(), "good 1;");
  EXPECT_EQ(linker_.modules().size(), 1u);
  EXPECT_EQ(znrxUnloadModule(pathOf(L"good.lyx")), Quorl::eOk);
  EXPECT_FALSE(znrxModuleIsLoaded(L"good.lyx"));
}

TEST_F(Linker, WhatDoesNotFitIsRefusedAndGone) {
  struct Case {
    const wchar_t* module;
    Quorl::ErrorStatus status;
    const wchar_t* parts[2]; // of the error text, beside the file's name
    const char* told;
  };
  const ZnString noLibrary = ZnString::fromUtf8(QUORL_SOURCE_DIR "/tests/rx/CMakeLists.txt");
  const Case cases[] = {
      {L"old.lyx", Quorl::eVersionMismatch, {L"0x190000", L"0x1A0000"}, ""},
      {L"newer.lyx", Quorl::eVersionMismatch, {L"0x1A0001", L"0x1A0000"}, ""},
      {L"no_entry.lyx", Quorl::eInvalidInput, {L"znrxEntryPoint", L"exports no"}, ""},
      {L"no_version.lyx", Quorl::eInvalidInput, {L"znrxGetApiVersion", L"exports no"}, ""},
      {L"refusing.lyx", Quorl::eInvalidInput, {L"refused", L"answer 3"}, "refusing 1;"},
      {L"absent.lyx", Quorl::eNotFound, {L"module path", L"not"}, ""},
      {noLibrary.c_str(), Quorl::eInvalidInput, {L"can't be loaded", L""}, ""},
  };
  for (const Case& c : cases) {
    const std::string label = ZnString(c.module).utf8();
    EXPECT_EQ(znrxLoadModule(c.module), c.status) << label;
    EXPECT_GE(linker_.lastError().find(c.module), 0) << linker_.lastError().utf8();
    for (const wchar_t* part : c.parts)
      EXPECT_GE(linker_.lastError().find(part), 0) << linker_.lastError().utf8();
    EXPECT_EQ(takeTold(), c.told) << label;
    EXPECT_FALSE(znrxModuleIsLoaded(c.module)) << label;
    EXPECT_FALSE(isInProcess(c.module)) << label;
  }
  // The refusing module registered before it refused.
  deleteZnRxClass(znrxFindZnRxClass(L"refusingClass"));
  delete ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary"))->remove(L"refusingService");
}

TEST_F(Linker, ADependencyKeepsAModule) {
  ASSERT_EQ(znrxLoadModule(L"outer.lyx"), Quorl::eOk) << linker_.lastError().utf8();
  EXPECT_EQ(takeTold(), "outer 1;good 1;outer 10;good 10;");
  const auto modules = linker_.modules();
  ASSERT_EQ(modules.size(), 2u);
  EXPECT_EQ(modules[0].name, L"outer.lyx");
  EXPECT_EQ(modules[0].locks, 0);
  EXPECT_FALSE(modules[0].byCommand);
  EXPECT_EQ(modules[1].name, L"good.lyx");
  EXPECT_EQ(modules[1].locks, 1);
  EXPECT_TRUE(modules[1].byCommand);

  EXPECT_EQ(znrxUnloadModule(L"good.lyx"), Quorl::eVetoed);
  EXPECT_GE(linker_.lastError().find(L"locked"), 0);
  EXPECT_TRUE(isInProcess(L"good.lyx"));
  EXPECT_EQ(znrxUnloadModule(L"outer.lyx"), Quorl::eOk);
  EXPECT_EQ(znrxUnloadModule(L"good.lyx"), Quorl::eOk);
  EXPECT_EQ(takeTold(), "outer 2;outer 11;good 11;good 2;");
}

TEST_F(Linker, LocksCount) {
  ASSERT_EQ(znrxLoadModule(L"good.lyx"), Quorl::eOk);
  EXPECT_EQ(linker_.notifyDependency(L"goodService", true), Quorl::eOk);
  EXPECT_EQ(linker_.notifyDependency(L"goodService", true), Quorl::eOk);
  EXPECT_EQ(linker_.notifyDependency(L"goodService", false), Quorl::eOk);
  EXPECT_EQ(znrxUnloadModule(L"good.lyx"), Quorl::eVetoed);
  EXPECT_EQ(linker_.notifyDependency(L"goodService", false), Quorl::eOk);
  // One end too many must not turn the count round.
  EXPECT_EQ(linker_.notifyDependency(L"goodService", false), Quorl::eOk);
  EXPECT_EQ(linker_.modules().at(0).locks, 0);
  EXPECT_EQ(linker_.notifyDependency(L"unheardOf", true), Quorl::eKeyNotFound);
  const std::unique_ptr<ZnRxService> other(znrxRegisterService(L"otherService"));
  EXPECT_EQ(znrxRegisterService(L"otherService"), other.get());
  EXPECT_EQ(linker_.notifyDependency(L"otherService", true), Quorl::eOk);
  EXPECT_EQ(linker_.modules().at(0).locks, 0) << "another's service";
  ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary"))->remove(L"otherService");
  EXPECT_EQ(znrxUnloadModule(L"good.lyx"), Quorl::eOk);
}

TEST_F(Linker, UnloadNeedsAnAnnouncedModule) {
  EXPECT_EQ(znrxUnloadModule(L"good.lyx"), Quorl::eKeyNotFound);
  ASSERT_EQ(znrxLoadModule(L"silent.lyx"), Quorl::eOk);
  EXPECT_EQ(znrxUnloadModule(L"silent.lyx"), Quorl::eVetoed);
  EXPECT_TRUE(znrxModuleIsLoaded(L"silent.lyx"));
}

TEST_F(Linker, TheEndUnloadsInReverseOrderWhateverTheLocks) {
  ASSERT_EQ(znrxLoadModule(L"silent.lyx"), Quorl::eOk);
  ASSERT_EQ(znrxLoadModule(L"good.lyx"), Quorl::eOk);
  linker_.notifyDependency(L"goodService", true);
  takeTold();
  znrxUnloadAllModules();
  EXPECT_EQ(takeTold(), "good 2;silent 2;");
  EXPECT_FALSE(isInProcess(L"good.lyx"));
  EXPECT_FALSE(isInProcess(L"silent.lyx"));
}

TEST_F(Linker, PrintsOnlyWhenAsked) {
  EXPECT_EQ(znrxLoadModule(L"absent.lyx", false), Quorl::eNotFound);
  EXPECT_EQ(takeTold(), "");
  EXPECT_EQ(znrxLoadModule(L"absent.lyx", true), Quorl::eNotFound);
  EXPECT_EQ(takeTold(), linker_.lastError().utf8() + "\n");
  EXPECT_EQ(znrxLoadModule(L"good.lyx", true), Quorl::eOk);
  EXPECT_EQ(takeTold(), "good 1;good.lyx loaded.\n");
}

TEST_F(Linker, UnknownApplicationIdsAreToldSo) {
  int nobody = 0;
  for (void* id : {static_cast<void*>(&nobody), static_cast<void*>(nullptr)}) {
    EXPECT_EQ(linker_.announce(id), Quorl::eKeyNotFound);
    EXPECT_EQ(linker_.lockModule(id), Quorl::eKeyNotFound);
    EXPECT_EQ(linker_.unlockModule(id), Quorl::eKeyNotFound);
    EXPECT_EQ(linker_.unlockApplication(id), Quorl::eKeyNotFound);
  }
}

} // namespace
