// The companion's commands as the host sees them: by name, with plain values.
#include <gtest/gtest.h>

#include <memory>

#include "quorl/db/core/host_services.h"
#include "quorl/rx/command_registry.h"
#include "quorl/rx/dynamic_linker.h"
#include "quorl/rx/services.h"
#include "support/host_drawing.h"
#include "support/told_cases.h"

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
    return handleText(append(database->modelSpaceId(), entity).handle()).utf8();
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
    EXPECT_EQ(znrxUnloadModule(L"ZnDbTorvi.lyx"), Quorl::eVetoed) << "the commands need it";
    EXPECT_EQ(ZnRxDynamicLinker::instance().lastError(), L"ZnDbTorvi.lyx is locked 1 times");
    ASSERT_EQ(znrxUnloadModule(L"ZnTorvi.pyx"), Quorl::eOk);
    EXPECT_EQ(ZnRxDynamicLinker::instance().modules().front().locks, 0);
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

// Told in refusals.txt, of a drawing with a circle, a circle of radius 0 and a line.
TEST_F(CompanionCommands, RefuseWhatMakesNoSenseAndChangeNothing) {
  ASSERT_EQ(add(new ZnDbCircle({0, 0, 0}, ZnGeVector3d::kZAxis, 5)), "10");
  add(new ZnDbCircle({9, 0, 0}, ZnGeVector3d::kZAxis, 0));
  add(new ZnDbLine({0, 0, 0}, {5, 0, 0}));
  const size_t before = database->objectCount();
  runToldCases("companion/refusals.txt", 32, [&](const std::string&, const std::string& input, const Lines&) {
    const size_t blank = input.find(' ');
    ZnRxCommandContext context;
    context.arguments() = Value::parse(input.substr(blank));
    const Quorl::ErrorStatus status = run(ZnString::fromUtf8(input.substr(0, blank)).c_str(), context);
    EXPECT_EQ(database->objectCount(), before) << input;
    EXPECT_TRUE(database->audit(false).empty()) << input;
    return Lines{context.message().utf8(), Quorl::errorStatusText(status)};
  });
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
