// The companion's commands as the host sees them: by name, with plain values.
#include <gtest/gtest.h>

#include <memory>

#include "quorl/db/core/database.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/table/block_table.h"
#include "quorl/rx/command_registry.h"
#include "quorl/rx/dynamic_linker.h"
#include "quorl/rx/services.h"

namespace {

using Value = ZnRxCommandContext::Value;

const ZnString kModule = ZnString::fromUtf8(QUORL_BIN_DIR "/ZnDbTorvi.lyx");
const wchar_t* const kNames[] = {
    L"CENTERMARK",     L"CENTERLINE",   L"EDGEEXTENSION", L"REASSOCIATE",        L"DISASSOCIATE",
    L"TORVI.ANNOTATE", L"TORVI.REPORT", L"CENTERPATTERN", L"CENTERPATTERN.EDIT", L"CENTERPATTERN.PREVIEW"};

struct CompanionCommands : testing::Test {
  void SetUp() override {
    ASSERT_EQ(znrxLoadModule(kModule), Quorl::eOk) << ZnRxDynamicLinker::instance().lastError().utf8();
    database = std::make_unique<ZnDbDatabase>();
    zndbHostApplicationServices()->setWorkingDatabase(database.get());
  }
  void TearDown() override {
    zndbHostApplicationServices()->setWorkingDatabase(nullptr);
    database.reset();
    znrxUnloadAllModules();
  }
  Value add(ZnDbEntity* entity) {
    ZnDbHolder<ZnDbEntity> owner(entity);
    ZnDbHolder<ZnDbBlockTableRecord> space;
    ZnDbObjectId id;
    EXPECT_EQ(space.openForWrite(database->modelSpaceId()), Quorl::eOk);
    EXPECT_EQ(space->appendZnDbEntity(id, entity), Quorl::eOk);
    return handleText(id.handle()).utf8();
  }
  static Value edge(const Value& handle, int index = 0) {
    return {{"path", Value::array({handle})}, {"index", index}};
  }
  static Quorl::ErrorStatus run(const wchar_t* name, ZnRxCommandContext& context) {
    const ZnRxCommand* command = ZnRxCommandRegistry::instance().find(name);
    EXPECT_NE(command, nullptr);
    return command ? command->run(context) : Quorl::eKeyNotFound;
  }
  std::unique_ptr<ZnDbDatabase> database;
};

TEST_F(CompanionCommands, ComeAndGoWithTheModule) {
  for (int round = 0; round < 2; ++round) {
    for (const wchar_t* name : kNames) EXPECT_NE(ZnRxCommandRegistry::instance().find(name), nullptr);
    EXPECT_TRUE(znrxServiceIsRegistered(L"QuorlTorviPYXService"));
    ASSERT_EQ(znrxUnloadModule(L"ZnTorvi.pyx"), Quorl::eOk);
    for (const wchar_t* name : kNames) EXPECT_EQ(ZnRxCommandRegistry::instance().find(name), nullptr);
    EXPECT_FALSE(znrxServiceIsRegistered(L"QuorlTorviPYXService"));
    ASSERT_EQ(znrxLoadModule(ZnString::fromUtf8(QUORL_BIN_DIR "/ZnTorvi.pyx")), Quorl::eOk);
  }
}

TEST_F(CompanionCommands, NeedADrawing) {
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  for (const wchar_t* name : kNames) {
    ZnRxCommandContext context;
    EXPECT_EQ(run(name, context), Quorl::eNoDatabase);
    EXPECT_FALSE(context.message().isEmpty());
  }
}

TEST_F(CompanionCommands, RefuseWhatMakesNoSenseAndChangeNothing) {
  const Value circle = add(new ZnDbCircle({0, 0, 0}, ZnGeVector3d::kZAxis, 5));
  const Value point = add(new ZnDbCircle({9, 0, 0}, ZnGeVector3d::kZAxis, 0));
  const Value line = add(new ZnDbLine({0, 0, 0}, {5, 0, 0}));
  const Value none, emptyPath = {{"path", Value::array()}};
  const struct {
    const wchar_t* name;
    const char* argument;
    Value value;
    Quorl::ErrorStatus status;
  } cases[] = {
      {L"CENTERMARK", "none", none, Quorl::eNoInputEdges},
      {L"CENTERMARK", "edges", Value(3), Quorl::eInvalidInput},
      {L"CENTERMARK", "edges", edge(circle), Quorl::eInvalidInput}, // not in a list
      {L"CENTERMARK", "edges[]", edge(circle, 1), Quorl::eInvalidInput},
      {L"CENTERMARK", "edges[]", edge(circle, -1), Quorl::eInvalidInput},
      {L"CENTERMARK", "edges[]", edge("FFFF"), Quorl::eInvalidInput},
      {L"CENTERMARK", "edges[]", edge("no handle"), Quorl::eInvalidInput},
      {L"CENTERMARK", "edges[]", edge("1"), Quorl::eInvalidInput}, // a table
      {L"CENTERMARK", "edges[]", emptyPath, Quorl::eInvalidInput},
      {L"CENTERMARK", "edges[]", edge(line), Quorl::eInvalidInput},
      {L"CENTERMARK", "edges[]", edge(point), Quorl::eInvalidInput},
      {L"CENTERLINE", "none", none, Quorl::eNoInputEdges},
      {L"CENTERLINE", "edges[]", edge(line), Quorl::eInvalidInput}, // one is not enough
      {L"EDGEEXTENSION", "edges[]", edge(circle), Quorl::eInvalidInput},
      {L"REASSOCIATE", "none", none, Quorl::eNothingToDo},
      {L"REASSOCIATE", "objects[]", circle, Quorl::eInvalidInput},
      {L"DISASSOCIATE", "none", none, Quorl::eNothingToDo},
      {L"DISASSOCIATE", "objects[]", circle, Quorl::eInvalidInput},
      {L"DISASSOCIATE", "objects[]", Value(7), Quorl::eInvalidInput},
      {L"CENTERPATTERN", "edges[]", edge(line), Quorl::eInvalidInput},
      {L"CENTERPATTERN", "type", "round", Quorl::eInvalidInput},
      {L"CENTERPATTERN", "reference", edge("FFFF"), Quorl::eInvalidInput},
      {L"CENTERPATTERN.EDIT", "objects[]", circle, Quorl::eInvalidInput},
      {L"CENTERPATTERN.PREVIEW", "none", none, Quorl::eNoInputEdges},
      {L"TORVI.ANNOTATE", "minRadius", -1.0, Quorl::eInvalidInput},
      {L"TORVI.ANNOTATE", "maxRadius", -1.0, Quorl::eInvalidInput},
      {L"TORVI.ANNOTATE", "arcs", 361.0, Quorl::eInvalidInput},
      {L"TORVI.ANNOTATE", "arcs", -1.0, Quorl::eInvalidInput},
  };
  const size_t before = database->objectCount();
  for (const auto& row : cases) {
    ZnRxCommandContext context;
    const std::string argument(row.argument);
    if (argument.back() == ']')
      context.arguments()[argument.substr(0, argument.size() - 2)].push_back(row.value);
    else
      context.arguments()[argument] = row.value;
    EXPECT_EQ(run(row.name, context), row.status) << ZnString(row.name).utf8() << " " << argument;
    EXPECT_FALSE(context.message().isEmpty());
    EXPECT_EQ(database->objectCount(), before) << argument << ": " << context.message().utf8();
  }
}

TEST_F(CompanionCommands, AllMarksOfACallAreMadeOrNone) {
  ZnRxCommandContext context;
  context.arguments()["edges"] = {edge(add(new ZnDbCircle({0, 0, 0}, ZnGeVector3d::kZAxis, 5))),
                                  edge(add(new ZnDbLine({0, 0, 0}, {5, 0, 0})))};
  const size_t before = database->objectCount();
  EXPECT_EQ(run(L"CENTERMARK", context), Quorl::eInvalidInput);
  EXPECT_EQ(database->objectCount(), before);
  EXPECT_TRUE(database->audit(false).empty());
}

TEST_F(CompanionCommands, AnnotateTellsItsProgress) {
  struct Listening : ZnRxCommandContext {
    void progress(size_t done, size_t total) override { calls.emplace_back(done, total); }
    std::vector<std::pair<size_t, size_t>> calls;
  } context;
  for (int i = 0; i < 3; ++i) add(new ZnDbCircle({20.0 * i * i, 0, 0}, ZnGeVector3d::kZAxis, 5));
  ASSERT_EQ(run(L"TORVI.ANNOTATE", context), Quorl::eOk);
  EXPECT_EQ(context.result().at("created").size(), 3u);
  EXPECT_EQ(context.calls, (std::vector<std::pair<size_t, size_t>>{{1, 3}, {2, 3}, {3, 3}}));
  EXPECT_TRUE(database->audit(false).empty());
}

} // namespace
