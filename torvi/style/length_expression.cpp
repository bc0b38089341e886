#include "torvi/style/length_expression.h"

#include <charconv>
#include <regex>
#include <stdexcept>
#include <string>

const ZnString kByLinetypeExpression(L"BYLINETYPE");
const ZnString kDefaultCrossLengthExpression(L"0.1x");
const ZnString kDefaultCrossGapExpression(L"0.05x");

namespace {

const ZnString kByLinetypeSpelling(L"ByLinetype");

// The matcher recurses for each character; a text of this length says no length that a drawing can use.
constexpr int kLongestExpression = 1000;

// Groups of the grammar
constexpr size_t kNumber = 1, kRelativeMark = 8;

const std::wregex& grammar() {
  static const std::wregex expression(LR"(^\s*((([1-9]\d*|0)(\.(\d+))?)|(\.(\d+)))([xX]?)\s*$)");
  return expression;
}

// Of digits that the grammar has passed. Drawings travel, so the point is a point in every country.
double toDouble(const std::wstring& digits) {
  const std::string text(digits.begin(), digits.end());
  double number = 0.0;
  if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc::result_out_of_range)
    throw std::out_of_range("stod argument out of range");
  return number;
}

} // namespace

bool parseLengthExpression(const ZnString& expression, ZnString& normalised, double& number) {
  if (isByLinetypeExpression(expression)) {
    normalised = kByLinetypeSpelling;
    return true;
  }
  if (expression.length() > kLongestExpression) return false;
  std::wcmatch parts;
  const wchar_t* text = expression.c_str();
  if (!std::regex_match(text, text + expression.length(), parts, grammar())) return false;
  const std::wstring digits = parts[kNumber].str();
  number = toDouble(digits);
  normalised = ZnString(digits);
  if (parts[kRelativeMark].length() > 0) normalised += L"x";
  return true;
}

bool isValidCrossSizeExpression(const ZnString& expression, ZnString& normalised) {
  normalised.clear();
  double number = 0.0;
  if (parseLengthExpression(expression, normalised, number) &&
      (number != 0.0 || isByLinetypeExpression(normalised)))
    return true;
  normalised.clear();
  return false;
}

bool isByLinetypeExpression(const ZnString& expression) {
  return expression.equalsNoCase(kByLinetypeExpression);
}

bool isRelativeLengthExpression(const ZnString& expression) {
  return Quorl::foldCase(expression.last()) == L'x';
}

ZnString formatRelativeLength(double number) { return znrxFormatReal(number, L"%.24q1x"); }
