#include "quorl/rx/command_registry.h"

#include <gtest/gtest.h>

namespace {

Quorl::ErrorStatus nothing(ZnRxCommandContext&) { return Quorl::eOk; }

struct CommandRegistry : testing::Test {
  void SetUp() override {
    EXPECT_EQ(registry.addCommand(L"GROUP_A", L"CenterMark", nothing), Quorl::eOk);
    EXPECT_EQ(registry.addCommand(L"GROUP_B", L"alpha", nothing), Quorl::eOk);
    EXPECT_EQ(registry.addCommand(L"GROUP_A", L"BETA", nothing), Quorl::eOk);
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

TEST_F(CommandRegistry, ListedByNameAndRemovedByGroup) {
  EXPECT_EQ(names(), "alpha;BETA;CenterMark;");
  EXPECT_EQ(registry.removeGroup(L"group_a"), Quorl::eOk);
  EXPECT_EQ(names(), "alpha;");
  EXPECT_EQ(registry.removeGroup(L"GROUP_A"), Quorl::eKeyNotFound);
  EXPECT_EQ(registry.find(L"beta"), nullptr);
}

TEST_F(CommandRegistry, MistakesChangeNothing) {
  EXPECT_EQ(registry.addCommand(L"GROUP_B", L"beta", nothing), Quorl::eDuplicateKey);
  EXPECT_EQ(registry.addCommand(L"GROUP_B", L"", nothing), Quorl::eInvalidInput);
  EXPECT_EQ(registry.addCommand(L"", L"gamma", nothing), Quorl::eInvalidInput);
  EXPECT_EQ(registry.addCommand(L"GROUP_B", L"gamma", nullptr), Quorl::eInvalidInput);
  EXPECT_EQ(names(), "alpha;BETA;CenterMark;");
  EXPECT_EQ(registry.find(L"beta")->group, L"GROUP_A");
}

} // namespace
