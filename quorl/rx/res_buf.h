// Result buffers: lists of typed values that cross between host, modules and scripts.
#pragma once

#include <cstdint>
#include <memory>

#include "quorl/base/string.h"

enum ZnResType : int {
  kResNone = 5000, // no value; the last buffer of a list
  kResReal = 5001,
  kResShort = 5003,
  kResString = 5005,
  kResLong = 5010,
};

// One value and the rest of the list, which it owns. Only the member that restype names counts.
struct resbuf {
  int restype = kResNone;
  double real = 0.0;
  std::int16_t shortInt = 0;
  std::int32_t longInt = 0;
  ZnString text;
  std::unique_ptr<resbuf> next;

  resbuf() = default;
  resbuf(resbuf&&) noexcept = default;
  resbuf& operator=(resbuf&&) noexcept = default;
  // Frees the rest of the list one by one: a long list must not use up the stack.
  ~resbuf();

  static resbuf ofReal(double value);
  static resbuf ofShort(std::int16_t value);
  static resbuf ofLong(std::int32_t value);
  static resbuf ofString(const ZnString& value);
};

using ZnResBufList = std::unique_ptr<resbuf>;

// Builds a list from pairs of type and value: a double after kResReal, an int after kResShort or kResLong,
// a const wchar_t* after kResString. kResNone ends the arguments and becomes the last buffer. Null for an
// unknown type. The caller owns the list.
[[nodiscard]] resbuf* znutBuildList(int type, ...);
