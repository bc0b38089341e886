#include "torvi/style/length_expression.h"

#include <sstream>
#include <stdexcept>

#include "support/told_cases.h"
#include "torvi/style/center_mark_utils.h"

namespace {

// What the grammar makes of a text, and what a number is taken from that no grammar has looked at.
TEST(LengthExpression, TheGrammarDecidesAndTheNumberIsTakenFromAnyText) {
  runToldCases("torvi_style/length_cases.txt", 34,
               [](const std::string&, const std::string& input, const Lines&) {
                 const ZnString text = ZnString::fromUtf8(withLineEnds(input.substr(1, input.size() - 2)));
                 // What stands there before must not pass for an answer.
                 ZnString normalised, asSize(L"BYLINETYPE");
                 double number = 7.0, factor = -7.0, length = -7.0;
                 bool relative = false;
                 std::ostringstream grammar, taken;
                 if (!parseLengthExpression(text, normalised, number))
                   grammar << "refused";
                 else if (isByLinetypeExpression(text))
                   grammar << normalised.utf8();
                 else
                   grammar << normalised.utf8() << " is " << number;
                 EXPECT_EQ(normalised.isEmpty(), grammar.str() == "refused");
                 if (grammar.str() == "refused" || isByLinetypeExpression(text)) EXPECT_EQ(number, 7.0);
                 if (isValidCrossSizeExpression(text, asSize)) grammar << ", a size";
                 EXPECT_EQ(asSize, grammar.str().ends_with("size") ? normalised : ZnString());
                 ZnTorviStyle::getLengthExpressionInfo(text, relative, factor, length);
                 taken << (relative ? "relative " : "absolute ") << factor << " and " << length << ", of ten "
                       << ZnTorviStyle::getLengthFromExpression(10.0, text);
                 EXPECT_EQ(ZnDbCenterMarkUtils::expressionToSizeConvertor()(10.0, text),
                           ZnTorviStyle::getLengthFromExpression(10.0, text));
                 return Lines{grammar.str(), taken.str()};
               });
}

TEST(LengthExpression, AbsurdNumbers) {
  ZnString normalised;
  double number = 7.0;
  EXPECT_THROW(parseLengthExpression(std::wstring(400, L'9'), normalised, number), std::out_of_range);
  EXPECT_FALSE(parseLengthExpression(std::wstring(500000, L'9'), normalised, number));
  EXPECT_TRUE(normalised.isEmpty());
  EXPECT_TRUE(isRelativeLengthExpression(formatRelativeLength(1.0 / 3.0)));
  EXPECT_TRUE(parseLengthExpression(formatRelativeLength(1.0 / 3.0), normalised, number));
  EXPECT_EQ(number, 1.0 / 3.0);
}

} // namespace
