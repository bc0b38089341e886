#include "quorl/base/atom.h"

#include <gtest/gtest.h>

#include "quorl/base/string.h"

namespace {

TEST(Atom, EqualTextsShareOneAtom) {
  const ZnAtom first = ZnAtom::of(L"Radius");
  const std::wstring built = std::wstring(L"Rad") + L"ius";
  EXPECT_EQ(ZnAtom::of(built), first);
  EXPECT_EQ(ZnAtom::existing(built), first);
  EXPECT_FALSE(ZnAtom::of(L"radius") == first);
  EXPECT_EQ(first.text(), L"Radius");
  EXPECT_EQ(ZnAtom::fromAddress(first.address()), first);
}

TEST(Atom, ATextNobodyInternedHasNoAtom) {
  EXPECT_TRUE(ZnAtom::existing(L"never interned anywhere").isNull());
  EXPECT_TRUE(ZnAtom::of(L"").isNull());
  EXPECT_EQ(ZnAtom().text(), L"");
  EXPECT_TRUE(ZnAtom().folded().isNull());
}

TEST(Atom, FoldingIsOneAtomForAllSpellings) {
  const ZnAtom lower = ZnAtom::of(L"centerexe");
  for (const wchar_t* spelling : {L"CENTEREXE", L"CenterExe", L"centerexe"})
    EXPECT_EQ(ZnAtom::of(spelling).folded(), lower);
}

TEST(Atom, AStringForgetsItsAtomWhenItChanges) {
  ZnString name(L"Edge");
  EXPECT_EQ(name.atom(), ZnAtom::of(L"Edge"));
  name += L"Extension";
  EXPECT_EQ(name.atom(), ZnAtom::of(L"EdgeExtension"));
}

TEST(Handle, TextsGoBothWays) {
  struct Case {
    const wchar_t* text;
    int flags;
    std::uint64_t value;
  };
  const Case cases[] = {
      {L"1A", 2, 26},  {L"1a", 0, 26},
      {L"", 0, 0},     {L"0", 2, 0},
      {L"1Ax", 0, 26}, {L"1Ax", 2, 0},
      {L"x", 0, 0},    {L"-1", 0, 0},
      {L" 1A", 2, 0},  {L"FFFFFFFFFFFFFFFF", 2, ~std::uint64_t(0)},
      {L"0x1A", 2, 0}, {L"10000000000000000", 2, 0},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ZnString(c.text).asZnDbHandle(c.flags).value, c.value) << ZnString(c.text).utf8();
  for (const std::uint64_t value : {1ull, 26ull, 0xABCDEFull, ~0ull})
    EXPECT_EQ(handleText(ZnDbHandle(value)).asZnDbHandle(2).value, value);
  EXPECT_EQ(handleText(ZnDbHandle(0xbeef)), L"BEEF");
}

} // namespace
