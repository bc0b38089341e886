// What the geometry tests share: how near is near, random input, and ways to make entities from table rows.
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <memory>
#include <ostream>
#include <vector>

#include "quorl/ge/angles.h"
#include "quorl/ge/curve3d.h"
#include "quorl/ge/plane.h"

// RapidCheck and GoogleTest print failing values with these.
inline std::ostream& operator<<(std::ostream& out, const ZnGePoint3d& p) {
  return out << '(' << p.x << ", " << p.y << ", " << p.z << ')';
}
inline std::ostream& operator<<(std::ostream& out, const ZnGeVector3d& v) {
  return out << '<' << v.x << ", " << v.y << ", " << v.z << '>';
}

namespace geTest {

// Rounding of a few operations on coordinates of up to a thousand units.
inline constexpr double kRounding = 1e-9;

// Absolute for small sizes, relative for large ones.
inline bool isNear(double a, double b, double size = 1.0) {
  return std::fabs(a - b) <= kRounding * std::max(1.0, size);
}
inline bool isNear(const ZnGePoint3d& a, const ZnGePoint3d& b, double size = 1.0) {
  return isNear(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z), 0.0, size);
}
inline bool isNear(const ZnGeVector3d& a, const ZnGeVector3d& b, double size = 1.0) {
  return isNear(std::hypot(a.x - b.x, a.y - b.y, a.z - b.z), 0.0, size);
}

// Random values on a grid, so that shrunk failures are readable and coincidences do occur.
inline rc::Gen<double> coordinate() {
  return rc::gen::map(rc::gen::inRange(-4000, 4001), [](int n) { return n / 16.0; });
}
inline rc::Gen<double> positive() {
  return rc::gen::map(rc::gen::inRange(1, 4001), [](int n) { return n / 16.0; });
}
inline rc::Gen<double> angle() {
  return rc::gen::map(rc::gen::inRange(-720, 721), [](int n) { return n * ZnGe::kPi / 180.0; });
}
inline ZnGePoint3d anyPoint() { return {*coordinate(), *coordinate(), *coordinate()}; }
inline ZnGeVector3d anyVector() {
  const ZnGePoint3d tip = anyPoint();
  const ZnGeVector3d v(tip.x, tip.y, tip.z);
  RC_PRE(v.length() > 0.5);
  return v;
}
// Rotation, translation, a uniform scale, and a mirroring in half of the cases.
inline ZnGeMatrix3d anySimilarity() {
  const ZnGeMatrix3d turned = ZnGeMatrix3d::rotation(*angle(), anyVector(), anyPoint());
  const ZnGeMatrix3d scaled = ZnGeMatrix3d::scaling(*rc::gen::element(0.25, 1.0, 3.0), anyPoint());
  const ZnGeMatrix3d moved = ZnGeMatrix3d::translation(anyVector());
  const bool isMirrored = *rc::gen::element(false, true);
  const ZnGeMatrix3d mirror =
      isMirrored ? ZnGeMatrix3d::mirroring(ZnGePlane(anyPoint(), anyVector())) : ZnGeMatrix3d();
  return moved * scaled * mirror * turned;
}

// The point at a share from 0 to 1 of a bounded curve's interval.
inline ZnGePoint3d pointAtShare(const ZnGeCurve3d& curve, double share) {
  const ZnGeInterval range = curve.interval();
  return curve.evalPoint(range.lowerBound() + share * (range.upperBound() - range.lowerBound()));
}

} // namespace geTest
