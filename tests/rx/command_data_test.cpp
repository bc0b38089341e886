#include "quorl/rx/command_data.h"

#include <gtest/gtest.h>

#include "quorl/rx/command_registry.h"

namespace {

using Value = ZnRxCommandValue;
using Kind = Value::Kind;

struct KindCase {
  const char* name;
  Value value;
  Kind kind;
  // What each reader gives, with the defaults true, -7, -7.5 and "none".
  bool asBool;
  std::int64_t asInt;
  double asDouble;
  const wchar_t* asString;
};

TEST(CommandData, ReadersTakeTheirOwnKindAndNoOther) {
  const KindCase cases[] = {
      {"null", {}, Kind::kNull, true, -7, -7.5, L"none"},
      {"bool", false, Kind::kBool, false, -7, -7.5, L"none"},
      {"int", 3, Kind::kInt, true, 3, 3.0, L"none"},
      {"long", std::int64_t{1} << 40, Kind::kInt, true, std::int64_t{1} << 40, 1099511627776.0, L"none"},
      {"double", 2.5, Kind::kDouble, true, -7, 2.5, L"none"},
      {"text", L"2.5", Kind::kString, true, -7, -7.5, L"2.5"},
      {"empty text", ZnString(), Kind::kString, true, -7, -7.5, L""},
      {"array", Value::array(), Kind::kArray, true, -7, -7.5, L"none"},
      {"object", Value::object(), Kind::kObject, true, -7, -7.5, L"none"},
  };
  for (const KindCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.value.kind(), row.kind);
    EXPECT_EQ(row.value.asBool(true), row.asBool);
    EXPECT_EQ(row.value.asInt(-7), row.asInt);
    EXPECT_EQ(row.value.asDouble(-7.5), row.asDouble);
    EXPECT_EQ(row.value.asString(L"none"), row.asString);
    EXPECT_TRUE(row.value.items().empty());
    EXPECT_TRUE(row.value.members().empty());
    EXPECT_TRUE(row.value.at(L"any").isNull());
    for (const KindCase& other : cases) EXPECT_EQ(row.value == other.value, &row == &other) << other.name;
  }
}

TEST(CommandData, TreesGrowFromNullAndKeepTheirOrder) {
  Value tree;
  tree[L"b"] = 1;
  tree[L"a"][L"inner"].append(L"x");
  tree[L"a"][L"inner"].append(2.0);
  tree[L"b"] = 5;
  ASSERT_EQ(tree.members().size(), 2u);
  EXPECT_EQ(tree.members()[0].name, L"b");
  EXPECT_EQ(tree.at(L"b").asInt(), 5);
  EXPECT_EQ(tree.at(L"a").at(L"inner").items().size(), 2u);
  EXPECT_TRUE(tree.at(L"A").isNull());

  Value copy = tree;
  EXPECT_EQ(copy, tree);
  copy[L"a"][L"inner"].append(true);
  EXPECT_FALSE(copy == tree);
  EXPECT_EQ(tree.at(L"a").at(L"inner").items().size(), 2u);
}

TEST(CommandData, AContextHandsTheStatusAndTheReasonOn) {
  ZnRxCommandContext context;
  context.arguments()[L"count"] = 2;
  EXPECT_EQ(std::as_const(context).arguments().at(L"count").asInt(), 2);
  EXPECT_TRUE(context.message().isEmpty());
  EXPECT_EQ(context.fail(Quorl::eOnLockedLayer, L"no"), Quorl::eOnLockedLayer);
  EXPECT_EQ(context.message(), L"no");
}

} // namespace
