#include "quorl/rx/variable_value.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr auto kBool = ZnRxVariableType::kBool;
constexpr auto kInt16 = ZnRxVariableType::kInt16;
constexpr auto kInt32 = ZnRxVariableType::kInt32;
constexpr auto kDouble = ZnRxVariableType::kDouble;
constexpr auto kString = ZnRxVariableType::kString;

// What is typed, the wanted type, and how the value reads again; null where the text is refused.
TEST(VariableValue, TextsAreReadAsTheWantedType) {
  struct Case {
    const wchar_t* typed;
    ZnRxVariableType type;
    const wchar_t* text;
  };
  const Case cases[] = {
      {L"1", kBool, L"1"},          {L"off", kBool, L"0"},           {L" TRUE ", kBool, L"1"},
      {L"2", kBool, nullptr},       {L"yes", kBool, nullptr},        {L"", kBool, nullptr},
      {L"-3", kInt16, L"-3"},       {L"2.0", kInt16, L"2"},          {L"2.5", kInt16, nullptr},
      {L"32767", kInt16, L"32767"}, {L"32768", kInt16, nullptr},     {L"-32768", kInt16, L"-32768"},
      {L"32768", kInt32, L"32768"}, {L"1e10", kInt32, nullptr},      {L"-2147483648", kInt32, L"-2147483648"},
      {L" .5 ", kDouble, L"0.5"},   {L"+2", kDouble, L"2"},          {L"1e-3", kDouble, L"0.001"},
      {L"0.5x", kDouble, nullptr},  {L"1,5", kDouble, nullptr},      {L"inf", kDouble, nullptr},
      {L"nan", kDouble, nullptr},   {L"1e999", kDouble, nullptr},    {L"+-1", kDouble, nullptr},
      {L"", kDouble, nullptr},      {L" 0.1x ", kString, L" 0.1x "}, {L"", kString, L""},
  };
  for (const Case& c : cases) {
    const std::string label = ZnString(c.typed).utf8() + " as " + std::to_string(static_cast<int>(c.type));
    const auto value = ZnRxVariableValue::from(resbuf::ofString(c.typed), c.type);
    ASSERT_EQ(value.has_value(), c.text != nullptr) << label;
    if (!value) continue;
    EXPECT_EQ(value->type(), c.type) << label;
    EXPECT_EQ(value->text().utf8(), ZnString(c.text).utf8()) << label;
    // Through a buffer and back is the same value.
    EXPECT_EQ(ZnRxVariableValue::from(value->toBuffer(), c.type), value) << label;
  }
}

TEST(VariableValue, NumbersConvertWithoutLoss) {
  struct Case {
    resbuf buffer;
    ZnRxVariableType type;
    bool taken;
    double number;
  };
  Case cases[] = {
      {resbuf::ofShort(7), kDouble, true, 7.0},
      {resbuf::ofReal(7.0), kInt16, true, 7.0},
      {resbuf::ofReal(7.5), kInt16, false, 0.0},
      {resbuf::ofLong(70000), kInt16, false, 0.0},
      {resbuf::ofLong(70000), kInt32, true, 7e4},
      {resbuf::ofShort(1), kBool, true, 1.0},
      {resbuf::ofShort(-1), kBool, false, 0.0},
      {resbuf::ofShort(1), kString, false, 0.0},
      {resbuf(), kDouble, false, 0.0},
      {resbuf::ofReal(3e9), kInt32, false, 0.0},
      {resbuf::ofReal(std::numeric_limits<double>::quiet_NaN()), kDouble, false, 0.0},
  };
  for (const Case& c : cases) {
    const auto value = ZnRxVariableValue::from(c.buffer, c.type);
    ASSERT_EQ(value.has_value(), c.taken) << c.buffer.restype << " as " << static_cast<int>(c.type);
    EXPECT_EQ(value ? *value->number() : 0.0, c.number);
  }
  EXPECT_EQ(ZnRxVariableValue::ofString(L"7").number(), std::nullopt);
}

} // namespace
