// The lasting name of an object in its drawing: a number that is never given twice.
#pragma once

#include <compare>
#include <cstdint>

struct ZnDbHandle {
  std::uint64_t value = 0;

  constexpr ZnDbHandle() = default;
  constexpr explicit ZnDbHandle(std::uint64_t number)
      : value(number) {}
  constexpr bool isNull() const { return value == 0; }
  constexpr auto operator<=>(const ZnDbHandle&) const = default;
};
