#include "torvi/style/length_expression.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "torvi/style/center_mark_utils.h"

namespace {

struct Grammar {
  const wchar_t* text;
  bool validAsSize; // as the length of a cross; as a gap all are
  const wchar_t* normalised = L"";
  double number = 0.0;
};

constexpr Grammar kGrammar[] = {
    {L"0.1x", true, L"0.1x", 0.1},   {L" .50X ", true, L".50x", 0.5}, {L".5", true, L".5", 0.5},
    {L"\t2.5\n", true, L"2.5", 2.5}, {L"120", true, L"120", 120.0},   {L"10.050", true, L"10.050", 10.05},
    {L"0", false, L"0", 0.0},        {L"0x", false, L"0x", 0.0},      {L"0.000", false, L"0.000", 0.0}};

constexpr const wchar_t* kInvalid[] = {L"",     L"x",   L"01",          L"00",         L"1.",  L".",
                                       L"-1",   L"+1",  L"1e3",         L"1 x",        L"1xx", L"1,5",
                                       L"0x10", L"abc", L"byLineType ", L" ByLinetype"};

TEST(LengthExpression, TheGrammarDecidesAndNormalises) {
  for (const Grammar& row : kGrammar) {
    SCOPED_TRACE(ZnString(row.text).utf8());
    ZnString normalised;
    double number = 0.0;
    EXPECT_TRUE(parseLengthExpression(row.text, normalised, number));
    EXPECT_EQ(normalised.utf8(), ZnString(row.normalised).utf8());
    EXPECT_EQ(number, row.number);
    ZnString asSize(L"BYLINETYPE"); // what stands there before must not pass for an answer
    EXPECT_EQ(isValidCrossSizeExpression(row.text, asSize), row.validAsSize);
    EXPECT_EQ(asSize.utf8(), ZnString(row.validAsSize ? row.normalised : L"").utf8());
  }
  for (const wchar_t* text : kInvalid) {
    ZnString normalised, asSize(L"BYLINETYPE");
    double number = 7.0;
    EXPECT_FALSE(parseLengthExpression(text, normalised, number)) << ZnString(text).utf8();
    EXPECT_FALSE(isValidCrossSizeExpression(text, asSize)) << ZnString(text).utf8();
    EXPECT_TRUE(normalised.isEmpty() && asSize.isEmpty());
    EXPECT_EQ(number, 7.0);
  }
}

TEST(LengthExpression, TheWordInAnyCaseAndAbsurdNumbers) {
  ZnString normalised;
  double number = 7.0;
  for (const wchar_t* text : {L"BYLINETYPE", L"bylinetype", L"byLineType"}) {
    EXPECT_TRUE(parseLengthExpression(text, normalised, number) && isByLinetypeExpression(text));
    EXPECT_EQ(normalised, L"ByLinetype");
    EXPECT_EQ(number, 7.0);
    EXPECT_TRUE(isValidCrossSizeExpression(text, normalised));
  }
  normalised = ZnString();
  EXPECT_THROW(parseLengthExpression(std::wstring(400, L'9'), normalised, number), std::out_of_range);
  EXPECT_FALSE(parseLengthExpression(std::wstring(500000, L'9'), normalised, number));
  EXPECT_TRUE(normalised.isEmpty());
}

TEST(LengthExpression, InfoSplitsIntoFactorAndLength) {
  struct {
    const wchar_t* text;
    bool relative;
    double factor, length;
    double onTen; // the length for a base of 10
  } const rows[] = {{L"0.1x", true, 0.1, 0.0, 1.0},     {L"0.1X", true, 0.1, 0.0, 1.0},
                    {L"2.5", false, 1.0, 2.5, 2.5},     {L"", false, 1.0, 0.0, 0.0},
                    {L"x", true, 0.0, 0.0, 0.0},        {L"abcx", true, 0.0, 0.0, 0.0},
                    {L"abc", false, 1.0, 0.0, 0.0},     {L"ByLinetype", false, 1.0, 0.0, 0.0},
                    {L"0.1x ", false, 1.0, 0.1, 0.1},   {L" -2x", true, -2.0, 0.0, -20.0},
                    {L"1e2", false, 1.0, 100.0, 100.0}, {L"3.5mm", false, 1.0, 3.5, 3.5}};
  const ZnCenterMarkSizeConverter convertor = ZnDbCenterMarkUtils::expressionToSizeConvertor();
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.text).utf8());
    bool relative = false;
    double factor = -7.0, length = -7.0;
    ZnTorviStyle::getLengthExpressionInfo(row.text, relative, factor, length);
    EXPECT_EQ(relative, row.relative);
    EXPECT_DOUBLE_EQ(factor, row.factor);
    EXPECT_DOUBLE_EQ(length, row.length);
    EXPECT_DOUBLE_EQ(ZnTorviStyle::getLengthFromExpression(10.0, row.text), row.onTen);
    EXPECT_DOUBLE_EQ(convertor(10.0, row.text), row.onTen);
  }
}

TEST(LengthExpression, FormattedFactorsReadBackAsTheyWere) {
  for (const double factor : {0.9, 0.1, 1.0, 1.0 / 3.0, 0.7 - 0.1, 1e-7}) {
    const ZnString text = formatRelativeLength(factor);
    ZnString normalised;
    double number = 0.0;
    ASSERT_TRUE(parseLengthExpression(text, normalised, number)) << text.utf8();
    EXPECT_EQ(number, factor);
    EXPECT_TRUE(isRelativeLengthExpression(text));
  }
  EXPECT_EQ(formatRelativeLength(0.9).utf8(), "0.9x");
}

} // namespace
