#include "quorl/rx/variable_value.h"

#include <gtest/gtest.h>

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

} // namespace
