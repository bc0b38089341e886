#include "quorl/rx/value.h"

#include <gtest/gtest.h>

#include <array>

#include "quorl/rx/geometry_values.h"
#include "quorl/rx/registry.h"

// Too large to be held in place, and counted.
struct TBulky {
  static int living;
  std::array<double, 16> numbers{};
  TBulky() { ++living; }
  TBulky(const TBulky& other)
      : numbers(other.numbers) {
    ++living;
  }
  TBulky& operator=(const TBulky&) = default;
  ~TBulky() { --living; }
  bool operator==(const TBulky& other) const { return numbers == other.numbers; }
};
int TBulky::living = 0;
ZNRX_DECLARE_VALUE_TYPE(TBulky)
ZNRX_DEFINE_VALUE_TYPE(
    TBulky, L"TBulky", L"TBulkyParent", [](const TBulky&) { return ZnString(L"bulky"); }, nullptr)

namespace {

TEST(Value, HoldsWhatItWasGiven) {
  struct Case {
    ZnRxValue value;
    const wchar_t* typeName;
    const wchar_t* text;
  };
  const Case cases[] = {
      {true, L"bool", L"true"},
      {static_cast<short>(-3), L"int16", L"-3"},
      {70000, L"int32", L"70000"},
      {0.1, L"double", L"0.1"},
      {L"0.1x", L"ZnString", L"0.1x"},
      {ZnString(L"Ø"), L"ZnString", L"Ø"},
      {ZnGePoint3d(1.0, -2.5, 0.0), L"ZnGePoint3d", L"1,-2.5,0"},
      {ZnGeVector3d(0.0, 0.0, 1.0), L"ZnGeVector3d", L"0,0,1"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.value.type()->name().utf8(), ZnString(c.typeName).utf8());
    EXPECT_EQ(znrxFindZnRxClass(c.typeName), c.value.type());
    EXPECT_EQ(c.value.toString().utf8(), ZnString(c.text).utf8());
    const ZnRxValue copy(c.value);
    EXPECT_TRUE(copy == c.value);
    for (const Case& other : cases)
      EXPECT_EQ(other.value == c.value, &other == &c) << ZnString(c.typeName).utf8();
  }
}

TEST(Value, CastsToItsOwnTypeAlone) {
  const ZnRxValue value(2.5);
  ASSERT_NE(znrxValueCast<double>(&value), nullptr);
  EXPECT_EQ(*znrxValueCast<double>(&value), 2.5);
  EXPECT_EQ(znrxValueCast<int>(&value), nullptr);
  EXPECT_EQ(znrxValueCast<ZnString>(&value), nullptr);
  EXPECT_EQ(znrxValueCast<double>(nullptr), nullptr);
  const ZnRxValue empty;
  EXPECT_EQ(znrxValueCast<double>(&empty), nullptr);
  EXPECT_TRUE(empty.isEmpty());
  EXPECT_EQ(empty.toString(), L"");
  EXPECT_TRUE(empty == ZnRxValue());
  EXPECT_TRUE(ZnRxValue::varies().isVaries());
  for (const ZnRxValue& other : {ZnRxValue(true), ZnRxValue(), ZnRxValue(L"*varies*")})
    EXPECT_FALSE(other.isVaries() || other == ZnRxValue::varies());
}

TEST(Value, LargeValuesAreCopiedAndFreed) {
  {
    TBulky original;
    original.numbers[15] = 4.0;
    ZnRxValue first(original);
    ZnRxValue second(first);
    EXPECT_EQ(TBulky::living, 3);
    EXPECT_EQ(znrxValueCast<TBulky>(&second)->numbers[15], 4.0);
    EXPECT_NE(first.address(), second.address());
    EXPECT_TRUE(first == second);
    original.numbers[0] = 1.0;
    second = ZnRxValue(original);
    EXPECT_FALSE(first == second);
    const ZnRxValue& self = first;
    first = self;
    EXPECT_EQ(znrxValueCast<TBulky>(&first)->numbers[15], 4.0);
    second = 1;
    EXPECT_EQ(TBulky::living, 2);
    first.clear();
    EXPECT_EQ(TBulky::living, 1);
  }
  EXPECT_EQ(TBulky::living, 0);
}

TEST(Value, ATypeLivesFromFirstUseToRelease) {
  ZnRxValueType::Desc<TBulky>::release();
  EXPECT_EQ(znrxFindZnRxClass(L"TBulky"), nullptr);
  ZnRxValueType& type = ZnRxValueType::Desc<TBulky>::value();
  EXPECT_EQ(&ZnRxValueType::Desc<TBulky>::value(), &type);
  auto* classes = ZnRxDictionary::cast(znrxSysRegistry()->at(L"ClassDictionary"));
  EXPECT_EQ(ZnRxValueType::cast(classes->at(L"TBulky")), &type);

  // Like every class it may be there before its parent, and carries extensions.
  ZnRxClass* parent = newZnRxClass(L"TBulkyParent", nullptr);
  znrxBuildClassHierarchy();
  EXPECT_TRUE(type.isDerivedFrom(parent));
  ZnRxObject extension;
  parent->addX(ZnRxObject::desc(), &extension);
  EXPECT_EQ(type.queryX(ZnRxObject::desc()), &extension);
  deleteZnRxClass(parent);
  ZnRxValueType::Desc<TBulky>::release();
  EXPECT_FALSE(classes->has(L"TBulky"));
}

} // namespace
