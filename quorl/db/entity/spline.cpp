#include "quorl/db/entity/spline.h"

#include <algorithm>

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbSpline, ZnDbCurve, L"SPLINE")

namespace {

constexpr std::int16_t kVersion = 1;

// A definition as fields have it.
struct Definition {
  std::int64_t degree = 0;
  std::vector<double> knots, weights;
  std::vector<ZnGePoint3d> points;

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
};

template<class Filer>
ErrorStatus takeDefinition(Filer& filer, ZnGeNurbCurve3d& curve, const Definition& read) {
  if (filer.status() == Quorl::eOk && read.build(curve) != Quorl::eOk) filer.setStatus(Quorl::eFileDamaged);
  return filer.status();
}

} // namespace

ZnDbSpline::ZnDbSpline() { curve_.set(1, {0.0, 0.0, 1.0, 1.0}, {ZnGePoint3d(), ZnGePoint3d(1.0, 0.0, 0.0)}); }

ZnDbSpline::ZnDbSpline(const ZnGeNurbCurve3d& curve)
    : ZnDbSpline() {
  setCurve(curve);
}

ErrorStatus ZnDbSpline::setCurve(const ZnGeNurbCurve3d& curve) {
  assertWriteEnabled();
  if (curve.degree() < 1) return Quorl::eDegenerateGeometry;
  if (!Definition{curve.degree(), curve.knots(), curve.weights(), curve.controlPoints()}.isFinite())
    return Quorl::eInvalidInput;
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

ErrorStatus ZnDbSpline::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeInt16(static_cast<std::int16_t>(curve_.degree()));
  filer.writeInt32(static_cast<std::int32_t>(curve_.knots().size()));
  for (const double knot : curve_.knots()) filer.writeDouble(knot);
  filer.writeInt32(static_cast<std::int32_t>(curve_.controlPoints().size()));
  for (const ZnGePoint3d& point : curve_.controlPoints()) filer.writePoint3d(point);
  filer.writeInt32(static_cast<std::int32_t>(curve_.weights().size()));
  for (const double weight : curve_.weights()) filer.writeDouble(weight);
  return filer.status();
}

ErrorStatus ZnDbSpline::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Definition read;
  read.degree = filer.readInt16();
  for (int left = filer.readCount(sizeof(double)); left > 0; --left) read.knots.push_back(filer.readDouble());
  for (int left = filer.readCount(3 * sizeof(double)); left > 0; --left)
    read.points.push_back(filer.readPoint3d());
  for (int left = filer.readCount(sizeof(double)); left > 0; --left)
    read.weights.push_back(filer.readDouble());
  return takeDefinition(filer, curve_, read);
}

ErrorStatus ZnDbSpline::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writeInteger(60, curve_.degree());
  for (const double knot : curve_.knots()) filer.writeDouble(40, knot);
  for (const ZnGePoint3d& point : curve_.controlPoints()) filer.writePoint3d(10, point);
  for (const double weight : curve_.weights()) filer.writeDouble(41, weight);
  return filer.status();
}

ErrorStatus ZnDbSpline::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::tdocInFields(filer); status != Quorl::eOk) return status;
  Definition read;
  bool found = false;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    found = true;
    if (item.code == 60) read.degree = item.integer;
    if (item.code == 40) read.knots.push_back(item.real);
    if (item.code == 10) read.points.push_back(item.point);
    if (item.code == 41) read.weights.push_back(item.real);
  });
  return found ? takeDefinition(filer, curve_, read) : filer.status();
}
