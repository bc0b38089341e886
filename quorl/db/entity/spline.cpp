#include "quorl/db/entity/spline.h"

#include <algorithm>

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbSpline, ZnDbCurve, L"SPLINE")

namespace {

// A definition as fields have it.
struct Definition {
  std::int64_t degree = 0;
  std::vector<double> knots, weights;
  std::vector<ZnGePoint3d> points;

  Definition() = default;
  explicit Definition(const ZnGeNurbCurve3d& curve)
      : degree(curve.degree())
      , knots(curve.knots())
      , weights(curve.weights())
      , points(curve.controlPoints()) {}
  bool isFinite() const {
    const auto finite = [](const auto& value) { return Quorl::isFinite(value); };
    return std::all_of(knots.begin(), knots.end(), finite) &&
           std::all_of(weights.begin(), weights.end(), finite) &&
           std::all_of(points.begin(), points.end(), finite);
  }
  ErrorStatus build(ZnGeNurbCurve3d& curve) const {
    if (degree < 1 || degree > ZnGeNurbCurve3d::kMaxDegree || !isFinite()) return Quorl::eInvalidInput;
    return curve.set(static_cast<int>(degree), knots, points, weights);
  }
  bool isUsable() const {
    ZnGeNurbCurve3d curve;
    return build(curve) == Quorl::eOk;
  }
};

} // namespace

ZnDbSpline::ZnDbSpline() { curve_.set(1, {0.0, 0.0, 1.0, 1.0}, {ZnGePoint3d(), ZnGePoint3d(1.0, 0.0, 0.0)}); }

ZnDbSpline::ZnDbSpline(const ZnGeNurbCurve3d& curve)
    : ZnDbSpline() {
  setCurve(curve);
}

ErrorStatus ZnDbSpline::setCurve(const ZnGeNurbCurve3d& curve) {
  assertWriteEnabled();
  if (curve.degree() < 1) return Quorl::eDegenerateGeometry;
  if (!Definition(curve).isFinite()) return Quorl::eInvalidInput;
  curve_ = curve;
  return Quorl::eOk;
}

void ZnDbSpline::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeNurbCurve3d>(curve_));
}

bool ZnDbSpline::isClosed() const { return curve_.isClosed(); }

ErrorStatus ZnDbSpline::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  curve_.transformBy(transform);
  return Quorl::eOk;
}

// The widest triangle at the first control point tells the plane best.
ErrorStatus ZnDbSpline::getPlane(ZnGePlane& plane) const {
  const std::vector<ZnGePoint3d>& points = curve_.controlPoints();
  const ZnGePoint3d& base = points.front();
  ZnGeVector3d arm, normal;
  for (const ZnGePoint3d& point : points)
    if ((point - base).length() > arm.length()) arm = point - base;
  for (const ZnGePoint3d& point : points)
    if (arm.crossProduct(point - base).length() > normal.length()) normal = arm.crossProduct(point - base);
  if (normal.length() <= ZnGeContext::gTol.equalVector() * arm.lengthSquared()) return Quorl::eNothingToDo;
  const ZnGePlane candidate(base, normal);
  for (const ZnGePoint3d& point : points)
    if (!candidate.isOn(point)) return Quorl::eNothingToDo;
  plane = candidate;
  return Quorl::eOk;
}

template<class Walk> void ZnDbSpline::describe(Walk& walk) {
  walk.section(className(), 1);
  const auto one = [](int code, const wchar_t* name) {
    return [=](auto& inner, auto& value) { inner.field(code, name, value); };
  };
  const auto fields = [&](auto& inner, Definition& definition) {
    inner.field(60, L"degree", zndbAs<std::int16_t>(definition.degree));
    inner.list(40, L"knots", definition.knots, one(40, L"knot"));
    inner.list(10, L"control points", definition.points, one(10, L"control point"));
    inner.list(41, L"weights", definition.weights, one(41, L"weight"));
  };
  Definition definition(curve_);
  walk.whole(L"curve", definition, fields, [](const Definition& d) { return d.isUsable(); });
  if constexpr (Walk::kReads)
    if (walk.isGood()) definition.build(curve_);
}

ZNDB_DEFINE_FIELDS(ZnDbSpline, ZnDbCurve)
