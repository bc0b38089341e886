#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
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
  const std::multiset<std::string> before = processState();
  for (int round = 0; round < 3; ++round) {
    load();
    EXPECT_TRUE(isInProcess(kFile));
    EXPECT_TRUE(znrxServiceIsRegistered(kService));
    EXPECT_GT(processState().size(), before.size());
    ASSERT_EQ(znrxUnloadModule(kCompanion), Quorl::eOk);
    ASSERT_EQ(znrxUnloadModule(kModule), Quorl::eOk) << linker_.lastError().utf8();
    EXPECT_EQ(processState(), before);
    EXPECT_FALSE(isInProcess(kFile));
    EXPECT_FALSE(isInProcess(QUORL_BIN_DIR "/en-US/ZnDbTorviRes.dll"));
  }
}

TEST_F(Entry, WorksWithoutADrawing) {
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  const std::multiset<std::string> before = processState();
  load();
  ASSERT_EQ(znrxUnloadModule(kCompanion), Quorl::eOk);
  ASSERT_EQ(znrxUnloadModule(kModule), Quorl::eOk);
  EXPECT_EQ(processState(), before);
}

TEST_F(Entry, BodyClassesAreRegisteredForDrawings) {
  struct {
    const wchar_t* name;
    const wchar_t* parent;
  } const rows[] = {{L"ZnDbTorviActionBodyBase", L"ZnDbAssocActionBody"},
                    {L"ZnDbTorviActionBody", L"ZnDbTorviActionBodyBase"},
                    {L"ZnDbCenterMarkActionBody", L"ZnDbTorviActionBody"},
                    {L"ZnDbCenterLineActionBody", L"ZnDbTorviActionBody"},
                    {L"ZnDbEdgeExtensionActionBody", L"ZnDbTorviActionBody"},
                    {L"ZnDbCenterMarkPatternActionBody", L"ZnDbCenterMarkActionBody"}};
  load();
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.name).utf8());
    const ZnRxClass* cls = znrxFindZnRxClass(row.name);
    ASSERT_NE(cls, nullptr);
    EXPECT_EQ(cls->parent(), znrxFindZnRxClass(row.parent));
    EXPECT_EQ(cls->version(), 33);
    EXPECT_EQ(cls->maintenanceVersion(), 427);
    EXPECT_EQ(cls->proxyFlags(), 1153);
    EXPECT_EQ(cls->tdocName(), row.name);
    EXPECT_EQ(cls->appName(), L"ZnDbTorvi");
    const std::unique_ptr<ZnRxObject> made(cls->create());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->isA(), cls);
  }
}

TEST_F(Entry, ADependencyOnTheServiceLocksTheModule) {
  load();
  const auto locks = [&] { return linker_.modules().front().locks; };
  znrxRegisterService(L"someOtherService");
  linker_.notifyDependency(L"someOtherService", true);
  EXPECT_EQ(locks(), 0);
  linker_.notifyDependency(kService, true);
  EXPECT_EQ(locks(), 1);
  EXPECT_EQ(znrxUnloadModule(kModule), Quorl::eVetoed);
  linker_.notifyDependency(L"someOtherService", false);
  EXPECT_EQ(locks(), 1);
  linker_.notifyDependency(kService, false);
  EXPECT_EQ(locks(), 0);
  EXPECT_EQ(znrxUnloadModule(kModule), Quorl::eOk);
  delete services()->remove(L"someOtherService");
}

TEST_F(Entry, TheCompanionComesUpWhereThereIsASideForIt) {
  struct {
    int productKind;
    bool serviceIsThere;
    bool loaded;
  } const rows[] = {
      {1, false, true}, {1, true, false}, {4, false, false}, {4, true, false}, {2, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.productKind << " " << row.serviceIsThere);
    setProductKind(row.productKind);
    if (row.serviceIsThere) znrxRegisterService(kCompanionService);
    load();
    EXPECT_EQ(znrxModuleIsLoaded(kCompanion), row.loaded);
    znrxUnloadAllModules();
    if (row.serviceIsThere) delete services()->remove(kCompanionService);
    EXPECT_FALSE(znrxServiceIsRegistered(kCompanionService));
  }
}

TEST_F(Entry, AMissingCompanionDoesNotMatter) {
  linker_.setModulePath({});
  load();
  EXPECT_FALSE(znrxModuleIsLoaded(kCompanion));
}

// The module's own exports, as the linker sees them.
class Exports : public Entry {
protected:
  using EntryPoint = int (*)(int, void*);
  void SetUp() override {
    Entry::SetUp();
    setProductKind(4);
    load();
    library_ = dlopen(kFile.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library_, nullptr);
    entry_ = reinterpret_cast<EntryPoint>(dlsym(library_, "znrxEntryPoint"));
    ASSERT_NE(entry_, nullptr);
  }
  void TearDown() override {
    dlclose(library_);
    Entry::TearDown();
  }
  void* library_ = nullptr;
  EntryPoint entry_ = nullptr;
};

TEST_F(Exports, TheInterfaceVersionIsTheHosts) {
  const auto version = reinterpret_cast<int (*)()>(dlsym(library_, "znrxGetApiVersion"));
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(version() >> 16, 26);
}

TEST_F(Exports, ASecondLoadAndUnknownMessagesChangeNothing) {
  const std::multiset<std::string> state = processState();
  const ZnRxClass* body = znrxFindZnRxClass(L"ZnDbCenterMarkActionBody");
  for (const int message : {1, 0, 3, 9, 12, -1}) EXPECT_EQ(entry_(message, nullptr), 0) << message;
  EXPECT_EQ(entry_(10, db_.get()), 0);
  EXPECT_EQ(linker_.modules().front().locks, 0);
  EXPECT_EQ(processState(), state);
  EXPECT_EQ(znrxFindZnRxClass(L"ZnDbCenterMarkActionBody"), body);
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
