// A value of a system variable: one of the five kinds that variables have.
#pragma once

#include <cstdint>
#include <optional>
#include <variant>

#include "quorl/base/string.h"
#include "quorl/rx/res_buf.h"

enum class ZnRxVariableType : int { kBool, kInt16, kInt32, kDouble, kString };

class ZnRxVariableValue {
public:
  ZnRxVariableValue() = default; // false
  static ZnRxVariableValue ofBool(bool value) { return ZnRxVariableValue(Held(value)); }
  static ZnRxVariableValue ofInt16(std::int16_t value) { return ZnRxVariableValue(Held(value)); }
  static ZnRxVariableValue ofInt32(std::int32_t value) { return ZnRxVariableValue(Held(value)); }
  static ZnRxVariableValue ofDouble(double value) { return ZnRxVariableValue(Held(value)); }
  static ZnRxVariableValue ofString(const ZnString& value) { return ZnRxVariableValue(Held(value)); }

  // The value of a buffer as a value of that type: numbers convert as long as nothing is lost, texts are
  // read as numbers ("on", "off", "true", "false" too for bool). None when that fails, or when a number is
  // wanted as a text.
  static std::optional<ZnRxVariableValue> from(const resbuf& buffer, ZnRxVariableType type);

  ZnRxVariableType type() const { return static_cast<ZnRxVariableType>(held_.index()); }
  // Numbers and bools read as a number; none for a text.
  std::optional<double> number() const;
  // Empty for everything but a text.
  ZnString string() const;
  // As users type it: 0 and 1 for bool, the shortest text that reads back for a double.
  ZnString text() const;
  // Bool travels as a short.
  resbuf toBuffer() const;

  friend bool operator==(const ZnRxVariableValue&, const ZnRxVariableValue&) = default;

private:
  // In the order of ZnRxVariableType.
  using Held = std::variant<bool, std::int16_t, std::int32_t, double, ZnString>;
  explicit ZnRxVariableValue(Held held)
      : held_(std::move(held)) {}
  Held held_ = false;
};
