#include "quorl/rx/command_registry.h"

#include <gtest/gtest.h>

namespace {

struct Counting : ZnRxCommandContext {
  int runs = 0;
};

Quorl::ErrorStatus count(ZnRxCommandContext& context) {
  ++dynamic_cast<Counting&>(context).runs;
  return Quorl::eNothingToDo;
}

struct CommandRegistry : testing::Test {
  void SetUp() override {
    EXPECT_EQ(registry.addCommand(L"GROUP_A", L"CenterMark", count), Quorl::eOk);
    EXPECT_EQ(registry.addCommand(L"GROUP_B", L"alpha", count), Quorl::eOk);
    EXPECT_EQ(registry.addCommand(L"GROUP_A", L"BETA", count), Quorl::eOk);
  }
  void TearDown() override {
    registry.removeGroup(L"GROUP_A");
    registry.removeGroup(L"GROUP_B");
  }
  std::string names() const {
    std::string all;
    for (const ZnRxCommand* command : registry.commands()) all += command->name.utf8() + ";";
    return all;
  }
  ZnRxCommandRegistry& registry = ZnRxCommandRegistry::instance();
};

TEST_F(CommandRegistry, CommandsAreFoundInAnyCaseAndRun) {
  Counting context;
  for (const wchar_t* spelling : {L"CENTERMARK", L"centermark", L"CenterMark"}) {
    const ZnRxCommand* command = registry.find(spelling);
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->name, L"CenterMark");
    EXPECT_EQ(command->run(context), Quorl::eNothingToDo);
  }
  EXPECT_EQ(context.runs, 3);
  EXPECT_EQ(registry.find(L"CENTER"), nullptr);
}

TEST_F(CommandRegistry, ListedByNameAndRemovedByGroup) {
  EXPECT_EQ(names(), "alpha;BETA;CenterMark;");
  EXPECT_EQ(registry.removeGroup(L"group_a"), Quorl::eOk);
  EXPECT_EQ(names(), "alpha;");
  EXPECT_EQ(registry.removeGroup(L"GROUP_A"), Quorl::eKeyNotFound);
  EXPECT_EQ(registry.find(L"beta"), nullptr);
}

TEST_F(CommandRegistry, MistakesChangeNothing) {
  EXPECT_EQ(registry.addCommand(L"GROUP_B", L"beta", count), Quorl::eDuplicateKey);
  EXPECT_EQ(registry.addCommand(L"GROUP_B", L"", count), Quorl::eInvalidInput);
  EXPECT_EQ(registry.addCommand(L"", L"gamma", count), Quorl::eInvalidInput);
  EXPECT_EQ(registry.addCommand(L"GROUP_B", L"gamma", nullptr), Quorl::eInvalidInput);
  EXPECT_EQ(names(), "alpha;BETA;CenterMark;");
  EXPECT_EQ(registry.find(L"beta")->group, L"GROUP_A");
}

} // namespace
