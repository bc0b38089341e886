#include "quorl/rx/variable_value.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "quorl/rx/real_format.h"

namespace {

std::optional<bool> switchOf(const ZnString& word) {
  struct Word {
    const wchar_t* text;
    bool value;
  };
  static constexpr Word kWords[] = {{L"on", true}, {L"off", false}, {L"true", true}, {L"false", false}};
  for (const Word& known : kWords)
    if (word.equalsNoCase(known.text)) return known.value;
  return std::nullopt;
}

// The whole text as a finite number, blanks around it aside.
std::optional<double> numberOf(ZnString text) {
  std::string digits = text.trimLeft().trimRight().utf8();
  if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') digits.erase(0, 1);
  double number = 0.0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<double> numberOf(const resbuf& buffer) {
  switch (buffer.restype) {
  case kResReal:
    return std::isfinite(buffer.real) ? std::optional(buffer.real) : std::nullopt;
  case kResShort:
    return buffer.shortInt;
  case kResLong:
    return buffer.longInt;
  case kResString:
    return numberOf(buffer.text);
  default:
    return std::nullopt;
  }
}

template<class Integer> bool isWhole(double number) {
  return number == std::trunc(number) && number >= std::numeric_limits<Integer>::min() &&
         number <= std::numeric_limits<Integer>::max();
}

} // namespace

std::optional<ZnRxVariableValue> ZnRxVariableValue::from(const resbuf& buffer, ZnRxVariableType type) {
  if (type == ZnRxVariableType::kString)
    return buffer.restype == kResString ? std::optional(ofString(buffer.text)) : std::nullopt;
  if (type == ZnRxVariableType::kBool && buffer.restype == kResString) {
    ZnString word = buffer.text;
    if (const auto on = switchOf(word.trimLeft().trimRight())) return ofBool(*on);
  }
  const std::optional<double> number = numberOf(buffer);
  if (!number) return std::nullopt;
  switch (type) {
  case ZnRxVariableType::kDouble:
    return ofDouble(*number);
  case ZnRxVariableType::kBool:
    if (*number != 0.0 && *number != 1.0) return std::nullopt;
    return ofBool(*number == 1.0);
  case ZnRxVariableType::kInt16:
    if (!isWhole<std::int16_t>(*number)) return std::nullopt;
    return ofInt16(static_cast<std::int16_t>(*number));
  case ZnRxVariableType::kInt32:
    if (!isWhole<std::int32_t>(*number)) return std::nullopt;
    return ofInt32(static_cast<std::int32_t>(*number));
  case ZnRxVariableType::kString:
    break;
  }
  return std::nullopt;
}

std::optional<double> ZnRxVariableValue::number() const {
  return std::visit(
      [](const auto& held) -> std::optional<double> {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(held)>>) return static_cast<double>(held);
        return std::nullopt;
      },
      held_);
}

ZnString ZnRxVariableValue::string() const {
  const ZnString* text = std::get_if<ZnString>(&held_);
  return text ? *text : ZnString();
}

ZnString ZnRxVariableValue::text() const {
  const std::optional<double> held = number();
  return held ? Quorl::shortestReal(*held) : string();
}

resbuf ZnRxVariableValue::toBuffer() const {
  switch (type()) {
  case ZnRxVariableType::kBool:
    return resbuf::ofShort(std::get<bool>(held_) ? 1 : 0);
  case ZnRxVariableType::kInt16:
    return resbuf::ofShort(std::get<std::int16_t>(held_));
  case ZnRxVariableType::kInt32:
    return resbuf::ofLong(std::get<std::int32_t>(held_));
  case ZnRxVariableType::kDouble:
    return resbuf::ofReal(std::get<double>(held_));
  case ZnRxVariableType::kString:
    break;
  }
  return resbuf::ofString(string());
}
