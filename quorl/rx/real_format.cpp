#include "quorl/rx/real_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace {

// More digits than any double needs to read back.
constexpr int kEnoughDigits = 17;

struct Decimal {
  bool negative = false;
  std::string digits; // without leading or trailing zeros; empty for zero
  int exponent = 0;   // of the first digit: 1 for 25
};

Decimal decimalOf(double value, int mostDigits) {
  char text[64];
  auto end = std::to_chars(text, text + sizeof text, std::abs(value), std::chars_format::scientific).ptr;
  const auto mantissaEnd = std::find(text, end, 'e');
  if (mantissaEnd - text > mostDigits + 1) // the point takes one place
    end = std::to_chars(text, text + sizeof text, std::abs(value), std::chars_format::scientific,
                        mostDigits - 1)
              .ptr;
  Decimal decimal;
  decimal.negative = std::signbit(value);
  const char* at = text;
  for (; *at != 'e'; ++at)
    if (*at != '.') decimal.digits += *at;
  // from_chars takes no plus sign.
  at += at[1] == '+' ? 2 : 1;
  std::from_chars(at, end, decimal.exponent);
  decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
  return decimal;
}

std::string plainText(const Decimal& decimal) {
  if (decimal.digits.empty()) return "0";
  std::string text = decimal.negative ? "-" : "";
  const int whole = decimal.exponent + 1;
  const int count = static_cast<int>(decimal.digits.size());
  if (whole <= 0) return text + "0." + std::string(static_cast<size_t>(-whole), '0') + decimal.digits;
  if (whole >= count) return text + decimal.digits + std::string(static_cast<size_t>(whole - count), '0');
  return text + decimal.digits.substr(0, static_cast<size_t>(whole)) + "." +
         decimal.digits.substr(static_cast<size_t>(whole));
}

// A number of a format; -1 when there is none. Digits beyond any sensible number change nothing.
int readNumber(const wchar_t*& at) {
  if (*at < L'0' || *at > L'9') return -1;
  int number = 0;
  for (; *at >= L'0' && *at <= L'9'; ++at) number = std::min(number * 10 + (*at - L'0'), 1000);
  return number;
}

} // namespace

ZnString znrxFormatReal(double value, const wchar_t* format) {
  if (!format || format[0] != L'%' || format[1] != L'.' || !std::isfinite(value)) return {};
  const wchar_t* at = format + 2;
  const int precision = readNumber(at);
  if (precision < 1 || *at++ != L'q') return {};
  // The mode is one digit: the tail may begin with another.
  if (*at++ != L'1') return {};
  return ZnString::fromUtf8(plainText(decimalOf(value, precision))) + at;
}

ZnString Quorl::shortestReal(double value) {
  if (!std::isfinite(value)) return std::isnan(value) ? L"nan" : value < 0.0 ? L"-inf" : L"inf";
  return ZnString::fromUtf8(plainText(decimalOf(value, kEnoughDigits)));
}
