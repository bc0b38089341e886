#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/rx/dynamic_linker.h"
#include "quorl/rx/host_globals.h"
#include "quorl/rx/member_query_engine.h"
#include "quorl/rx/overrule.h"
#include "quorl/rx/registry.h"
#include "quorl/rx/services.h"

namespace {

const std::string kFile = QUORL_BIN_DIR "/ZnDbTorvi.lyx";
const ZnString kModule = ZnString::fromUtf8(kFile);
const ZnString kCompanion(L"ZnTorvi.pyx");
const ZnString kService(L"ZnDbTorviLYXService");
const ZnString kCompanionService(L"QuorlTorviPYXService");

bool isInProcess(const std::string& file) {
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library) dlclose(library);
  return library != nullptr;
}

ZnRxDictionary* services() { return ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary")); }

// Everything of the process that a module can leave something in, by name.
std::multiset<std::string> processState() {
  std::multiset<std::string> state;
  for (const ZnRxClass* cls : znrxClasses()) {
    const std::string name = cls->name().utf8();
    state.insert("class " + name);
    for (const ZnRxOverrule* overrule : cls->overrules())
      state.insert(name + " overruled by " + overrule->isA()->name().utf8());
    for (const ZnRxClass* protocol : znrxClasses())
      if (cls->getX(protocol)) state.insert(name + " extended by " + protocol->name().utf8());
  }
  for (const auto& [name, object] : services()->entries()) state.insert("service " + name.utf8());
  for (const auto& [name, object] : znrxSysRegistry()->entries()) state.insert("registry " + name.utf8());
  const ZnDbBlockReference reference;
  for (const ZnRxMember* member : ZnRxMemberQueryEngine::theEngine()->members(&reference))
    state.insert("member " + member->name().utf8());
  if (const ZnDbDatabase* db = zndbHostApplicationServices()->workingDatabase())
    state.insert("database reactors " + std::to_string(db->reactors().size()));
  return state;
}

class Entry : public testing::Test {
protected:
  void SetUp() override {
    usualPath_ = linker_.modulePath();
    linker_.setModulePath({ZnString::fromUtf8(QUORL_BIN_DIR "/frame_modules")});
    db_ = std::make_unique<ZnDbDatabase>();
    zndbHostApplicationServices()->setWorkingDatabase(db_.get());
  }
  void TearDown() override {
    znrxUnloadAllModules();
    linker_.setModulePath(usualPath_);
    zndbHostApplicationServices()->setWorkingDatabase(nullptr);
    setProductKind(1);
  }
  void load() { ASSERT_EQ(znrxLoadModule(kModule), Quorl::eOk) << linker_.lastError().utf8(); }

  ZnRxDynamicLinker& linker_ = ZnRxDynamicLinker::instance();
  std::vector<ZnString> usualPath_;
  std::unique_ptr<ZnDbDatabase> db_;
};

TEST_F(Entry, LoadUnloadAndLoadAgainLeaveNothing) {
  for (const bool withDrawing : {true, true, false}) {
    if (!withDrawing) zndbHostApplicationServices()->setWorkingDatabase(nullptr);
    const std::multiset<std::string> before = processState();
    load();
    EXPECT_TRUE(isInProcess(kFile));
    EXPECT_TRUE(znrxServiceIsRegistered(kService));
    EXPECT_GT(processState().size(), before.size());
    ASSERT_EQ(znrxUnloadModule(kCompanion), Quorl::eOk);
    ASSERT_EQ(znrxUnloadModule(kModule), Quorl::eOk) << linker_.lastError().utf8();
    EXPECT_EQ(processState(), before);
    EXPECT_FALSE(isInProcess(kFile) || isInProcess(QUORL_BIN_DIR "/en-US/ZnDbTorviRes.dll"));
  }
}

TEST_F(Entry, BodyClassesAreRegisteredForDrawings) {
  const std::pair<const wchar_t*, const wchar_t*> rows[] = {
      {L"ZnDbTorviActionBodyBase", L"ZnDbAssocActionBody"},
      {L"ZnDbTorviActionBody", L"ZnDbTorviActionBodyBase"},
      {L"ZnDbCenterMarkActionBody", L"ZnDbTorviActionBody"},
      {L"ZnDbCenterLineActionBody", L"ZnDbTorviActionBody"},
      {L"ZnDbEdgeExtensionActionBody", L"ZnDbTorviActionBody"},
      {L"ZnDbCenterMarkPatternActionBody", L"ZnDbCenterMarkActionBody"}};
  load();
  for (const auto& [name, parent] : rows) {
    SCOPED_TRACE(ZnString(name).utf8());
    const ZnRxClass* cls = znrxFindZnRxClass(name);
    ASSERT_NE(cls, nullptr);
    EXPECT_EQ(cls->parent(), znrxFindZnRxClass(parent));
    EXPECT_TRUE(cls->version() == 33 && cls->maintenanceVersion() == 427 && cls->proxyFlags() == 1153);
    EXPECT_TRUE(cls->tdocName() == name && cls->appName() == L"ZnDbTorvi");
    EXPECT_EQ(std::unique_ptr<ZnRxObject>(cls->create())->isA(), cls);
  }
}

TEST_F(Entry, ADependencyOnTheServiceLocksTheModule) {
  load();
  const ZnString other(L"someOtherService");
  znrxRegisterService(other);
  const std::tuple<ZnString, bool, int> steps[] = {
      {other, true, 0}, {kService, true, 1}, {other, false, 1}, {kService, false, 0}};
  for (const auto& [service, depends, locks] : steps) {
    linker_.notifyDependency(service, depends);
    EXPECT_EQ(linker_.modules().front().locks, locks);
    if (locks > 0) EXPECT_EQ(znrxUnloadModule(kModule), Quorl::eVetoed);
  }
  EXPECT_EQ(znrxUnloadModule(kModule), Quorl::eOk);
  delete services()->remove(other);
}

TEST_F(Entry, TheCompanionComesUpWhereThereIsASideForIt) {
  struct {
    int productKind;
    bool serviceIsThere, isFound, loaded;
  } const rows[] = {{1, false, true, true}, {1, true, true, false}, {4, false, true, false},
                    {4, true, true, false}, {2, false, true, true}, {1, false, false, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    setProductKind(row.productKind);
    if (row.serviceIsThere) znrxRegisterService(kCompanionService);
    if (!row.isFound) linker_.setModulePath({});
    load();
    EXPECT_EQ(znrxModuleIsLoaded(kCompanion), row.loaded);
    znrxUnloadAllModules();
    if (row.serviceIsThere) delete services()->remove(kCompanionService);
    EXPECT_FALSE(znrxServiceIsRegistered(kCompanionService));
  }
}

// What the linker sees, on the side of the host that has no companion.
class Exports : public Entry {
protected:
  void SetUp() override {
    Entry::SetUp();
    setProductKind(4);
    load();
    library_ = dlopen(kFile.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library_, nullptr);
    entry_ = reinterpret_cast<int (*)(int, void*)>(dlsym(library_, "znrxEntryPoint"));
    ASSERT_NE(entry_, nullptr);
  }
  void TearDown() override {
    dlclose(library_);
    Entry::TearDown();
  }
  void* library_ = nullptr;
  int (*entry_)(int, void*) = nullptr;
};

TEST_F(Exports, ASecondLoadAndUnknownMessagesChangeNothing) {
  const std::multiset<std::string> state = processState();
  for (const int message : {1, 0, 3, 9, 12, -1}) EXPECT_EQ(entry_(message, nullptr), 0) << message;
  EXPECT_EQ(entry_(10, db_.get()), 0);
  EXPECT_EQ(linker_.modules().front().locks, 0);
  EXPECT_EQ(processState(), state);
  const auto version = reinterpret_cast<int (*)()>(dlsym(library_, "znrxGetApiVersion"));
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(version() >> 16, 26);
}

TEST_F(Exports, AnotherClassOfTheNameStopsTheProgram) {
  EXPECT_DEATH(
      {
        removeZnRxClass(znrxFindZnRxClass(L"ZnDbCenterMarkActionBody"));
        newZnRxClass(L"ZnDbCenterMarkActionBody", L"ZnDbTorviActionBody");
        entry_(1, nullptr);
      },
      "Class mismatch");
}

} // namespace
