// Spelling of the text format: numbers exactly, texts whatever they hold, and lines that are none.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "quorl/file/tdoc_items.h"

namespace {

RC_GTEST_PROP(TdocItems, DoublesComeBackToTheBit, (std::uint64_t bits)) {
  double value, back;
  std::memcpy(&value, &bits, sizeof value);
  RC_PRE(!std::isnan(value));
  std::string text;
  Quorl::appendDouble(text, value);
  RC_ASSERT(Quorl::parseDouble(text, back));
  RC_ASSERT(std::memcmp(&value, &back, sizeof value) == 0);
}

TEST(TdocItems, DoublesAreAsShortAsTheyCanBe) {
  const std::pair<double, const char*> cases[] = {{0.0, "0"},        {-0.0, "-0"},   {0.1, "0.1"},
                                                  {1e308, "1e+308"}, {-2.5, "-2.5"}, {5e-324, "5e-324"}};
  for (const auto& [value, text] : cases) {
    std::string written;
    Quorl::appendDouble(written, value);
    EXPECT_EQ(written, text);
  }
}

RC_GTEST_PROP(TdocItems, TextsAndBytesComeBack,
              (std::string text, std::int64_t number, std::uint64_t handle)) {
  std::string escaped, plain, hex, bytes, digits, handleDigits;
  Quorl::appendEscaped(escaped, text);
  RC_ASSERT(escaped.find_first_of("\r\n") == std::string::npos);
  RC_ASSERT(Quorl::unescape(escaped, plain));
  RC_ASSERT(plain == text);
  Quorl::appendHexBytes(hex, text);
  RC_ASSERT(Quorl::parseHexBytes(hex, bytes));
  RC_ASSERT(bytes == text);
  std::int64_t numberBack = 0;
  Quorl::appendInteger(digits, number);
  RC_ASSERT(Quorl::parseInteger(digits, numberBack) && numberBack == number);
  std::uint64_t handleBack = 0;
  Quorl::appendHex(handleDigits, handle);
  RC_ASSERT(Quorl::parseHex(handleDigits, handleBack) && handleBack == handle);
}

TEST(TdocItems, WhatIsNoValueIsRefused) {
  double real;
  std::int64_t integer;
  std::uint64_t handle;
  std::string bytes;
  for (const char* text : {"", " 1", "1 ", "1,5", "abc", "1e999", "0x1", "--1", "+1"})
    EXPECT_FALSE(Quorl::parseDouble(text, real)) << text;
  for (const char* text : {"", "1.0", " 7", "9223372036854775808", "1e3", "-"})
    EXPECT_FALSE(Quorl::parseInteger(text, integer)) << text;
  for (const char* text : {"", "-1", "G", "0x10", "10000000000000000", "1 "})
    EXPECT_FALSE(Quorl::parseHex(text, handle)) << text;
  for (const char* text : {"0", "0G", "g0", "00 00", "0-"})
    EXPECT_FALSE(Quorl::parseHexBytes(text, bytes)) << text;
  for (const char* text : {"\\", "a\\x", "\\\\\\"}) EXPECT_FALSE(Quorl::unescape(text, bytes)) << text;
}

TEST(TdocItems, CodesStandForTypes) {
  const std::pair<int, ZnTdocType> cases[] = {
      {0, ZnTdocType::kObject},  {1, ZnTdocType::kText},        {5, ZnTdocType::kHandle},
      {9, ZnTdocType::kText},    {10, ZnTdocType::kPoint},      {19, ZnTdocType::kPoint},
      {20, ZnTdocType::kDouble}, {59, ZnTdocType::kDouble},     {60, ZnTdocType::kInt16},
      {80, ZnTdocType::kNone},   {90, ZnTdocType::kInt32},      {100, ZnTdocType::kMarker},
      {101, ZnTdocType::kNone},  {140, ZnTdocType::kDouble},    {160, ZnTdocType::kInt64},
      {290, ZnTdocType::kBool},  {300, ZnTdocType::kText},      {310, ZnTdocType::kBytes},
      {329, ZnTdocType::kNone},  {330, ZnTdocType::kReference}, {369, ZnTdocType::kReference},
      {370, ZnTdocType::kNone},  {-1, ZnTdocType::kNone},       {1000, ZnTdocType::kNone}};
  for (const auto& [code, type] : cases) EXPECT_EQ(Quorl::tdocType(code), type) << code;
  for (int kind = 0; kind < kReferenceKinds; ++kind) {
    const auto known = static_cast<ZnReferenceKind>(kind);
    EXPECT_EQ(Quorl::tdocReferenceKind(Quorl::tdocReferenceCode(known) + 9), known);
  }
}

} // namespace
