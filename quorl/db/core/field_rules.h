// What a field may hold. A rule judges a value with the status that a setter gives for it, and knows a value
// to put in the place of a bad one; the same rule serves setters, readers and the audit.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "quorl/db/core/geometry_checks.h"

namespace ZnDbRule {

// Where nothing else is said: numbers and coordinates are finite, everything else is taken as it is.
struct Usual {
  Quorl::ErrorStatus operator()(double v) const { return judge(v); }
  Quorl::ErrorStatus operator()(const ZnGePoint2d& v) const { return judge(v); }
  Quorl::ErrorStatus operator()(const ZnGePoint3d& v) const { return judge(v); }
  Quorl::ErrorStatus operator()(const ZnGeVector3d& v) const { return judge(v); }
  Quorl::ErrorStatus operator()(const ZnGeMatrix3d& v) const { return judge(v); }
  template<class T> Quorl::ErrorStatus operator()(const std::optional<T>& v) const {
    return v ? (*this)(*v) : Quorl::eOk;
  }
  template<class T> Quorl::ErrorStatus operator()(const T&) const { return Quorl::eOk; }
  template<class T> void repair(T& value) const { value = T{}; }

private:
  template<class T> static Quorl::ErrorStatus judge(const T& v) {
    return Quorl::isFinite(v) ? Quorl::eOk : Quorl::eInvalidInput;
  }
};

// eInvalidInput for what is not finite, eOutOfRange below the least.
struct AtLeast {
  double least;
  Quorl::ErrorStatus operator()(double v) const {
    return !Quorl::isFinite(v) ? Quorl::eInvalidInput : v < least ? Quorl::eOutOfRange : Quorl::eOk;
  }
  void repair(double& value) const { value = least; }
};
constexpr AtLeast atLeast(double least) { return {least}; }

// Above zero: sizes and factors.
struct Positive {
  double usual;
  Quorl::ErrorStatus operator()(double v) const {
    return !Quorl::isFinite(v) ? Quorl::eInvalidInput : v <= 0.0 ? Quorl::eOutOfRange : Quorl::eOk;
  }
  void repair(double& value) const { value = usual; }
};
constexpr Positive positive(double usual = 1.0) { return {usual}; }

// A normal as it is kept, of length one.
struct Unit {
  Quorl::ErrorStatus operator()(const ZnGeVector3d& v) const {
    return Quorl::isUnit(v) ? Quorl::eOk : Quorl::eInvalidInput;
  }
  void repair(ZnGeVector3d& value) const { value = ZnGeVector3d::kZAxis; }
};
constexpr Unit unit() { return {}; }

// Integers and enumerations from a least to a greatest value.
struct Between {
  std::int64_t least, greatest;
  Quorl::ErrorStatus operator()(std::int64_t v) const {
    return v < least || v > greatest ? Quorl::eOutOfRange : Quorl::eOk;
  }
  template<class T> void repair(T& value) const { value = static_cast<T>(least); }
};
constexpr Between between(std::int64_t least, std::int64_t greatest) { return {least, greatest}; }

// What a function of the class says; the status for the rest is eOutOfRange.
template<class Says, class T> struct If {
  Says says;
  T usual;
  template<class V> Quorl::ErrorStatus operator()(const V& v) const {
    return says(v) ? Quorl::eOk : Quorl::eOutOfRange;
  }
  template<class V> void repair(V& value) const { value = static_cast<V>(usual); }
};
template<class Says, class T> constexpr If<Says, T> passing(Says says, T usual) { return {says, usual}; }

// What most setters do: the value is taken if the rule allows it, else nothing changes.
template<class T, class Rule = Usual>
Quorl::ErrorStatus take(T& target, const T& value, const Rule& rule = {}) {
  const Quorl::ErrorStatus status = rule(value);
  if (status == Quorl::eOk) target = value;
  return status;
}

} // namespace ZnDbRule
