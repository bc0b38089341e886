#include "quorl/db/entity/curve_snap.h"

#include <algorithm>
#include <cmath>

#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/plane.h"

namespace {

using Points = ZnArray<ZnGePoint3d>;

void addOnce(Points& points, const ZnGePoint3d& point) {
  if (!points.contains(point)) points.append(point);
}

const ZnGeCircArc3d* asCircular(const ZnGeCurve3d& curve) {
  return curve.isKindOf(ZnGe::kCircularArc3d) ? static_cast<const ZnGeCircArc3d*>(&curve) : nullptr;
}

const ZnGeEllipticalArc3d* asElliptic(const ZnGeCurve3d& curve) {
  return curve.isKindOf(ZnGe::kEllipticalArc3d) ? static_cast<const ZnGeEllipticalArc3d*>(&curve) : nullptr;
}

void addEnds(const ZnGeCurve3d& curve, const ZnGePoint3d&, Points& points) {
  if (curve.isClosed()) return;
  const ZnGeInterval range = curve.interval();
  addOnce(points, curve.evalPoint(range.lowerBound()));
  addOnce(points, curve.evalPoint(range.upperBound()));
}

// Half way along a curve whose parameter does not run with its length: along fine samples, then back onto the
// curve itself.
ZnGePoint3d halfwayPoint(const ZnGeCurve3d& curve) {
  std::vector<ZnGePoint3d> samples;
  curve.appendSamplePoints(0.0, samples);
  double whole = 0.0;
  for (size_t i = 1; i < samples.size(); ++i) whole += samples[i - 1].distanceTo(samples[i]);
  double left = 0.5 * whole;
  for (size_t i = 1; i < samples.size(); ++i) {
    const double step = samples[i - 1].distanceTo(samples[i]);
    if (step > 0.0 && left <= step)
      return curve.closestPointTo(samples[i - 1] + (samples[i] - samples[i - 1]) * (left / step));
    left -= step;
  }
  return curve.evalPoint(curve.interval().lowerBound());
}

void addMiddle(const ZnGeCurve3d& curve, const ZnGePoint3d&, Points& points) {
  if (curve.isClosed()) return;
  const bool evenPace = curve.isKindOf(ZnGe::kLineSeg3d) || asCircular(curve);
  addOnce(points, evenPace ? curve.evalPoint(curve.interval().middle()) : halfwayPoint(curve));
}

void addCenter(const ZnGeCurve3d& curve, const ZnGePoint3d&, Points& points) {
  if (const ZnGeCircArc3d* arc = asCircular(curve)) addOnce(points, arc->center());
  if (const ZnGeEllipticalArc3d* arc = asElliptic(curve)) addOnce(points, arc->center());
}

// The ends of two perpendicular diameters, as far as the curve reaches them.
void addQuadrants(const ZnGeCurve3d& curve, const ZnGePoint3d&, Points& points) {
  ZnGePoint3d center;
  ZnGeVector3d axes[2];
  if (const ZnGeCircArc3d* arc = asCircular(curve)) {
    center = arc->center();
    axes[0] = arc->normal().perpVector() * arc->radius();
    axes[1] = arc->normal().crossProduct(axes[0]);
  } else if (const ZnGeEllipticalArc3d* ellipse = asElliptic(curve)) {
    center = ellipse->center();
    axes[0] = ellipse->majorAxis();
    axes[1] = ellipse->minorAxis();
  } else {
    return;
  }
  for (const ZnGePoint3d& point : {center + axes[0], center + axes[1], center - axes[0], center - axes[1]})
    if (curve.isOn(point)) addOnce(points, point);
}

// Where the curve runs at a right angle to the view from lastPoint. A circle has two such places, other
// curves give the nearest one.
void addPerpendicular(const ZnGeCurve3d& curve, const ZnGePoint3d& lastPoint, Points& points) {
  if (const ZnGeCircArc3d* arc = asCircular(curve)) {
    const ZnGeVector3d view = ZnGePlane(arc->center(), arc->normal()).project(lastPoint) - arc->center();
    if (view.isZeroLength()) return;
    const ZnGeVector3d toFoot = view.normal() * arc->radius();
    for (const ZnGePoint3d& foot : {arc->center() + toFoot, arc->center() - toFoot})
      if (curve.isOn(foot)) addOnce(points, foot);
    return;
  }
  const double param = curve.paramOf(lastPoint);
  const ZnGePoint3d foot = curve.evalPoint(param);
  const ZnGeVector3d view = lastPoint - foot;
  if (view.isZeroLength() || view.isPerpendicularTo(curve.evaluateDerivative(param))) addOnce(points, foot);
}

// The tangents from a point at the distance d touch a circle of the radius r at the angle acos(r / d) from
// the direction to the point, to both sides.
void addTangent(const ZnGeCurve3d& curve, const ZnGePoint3d& lastPoint, Points& points) {
  const ZnGeCircArc3d* arc = asCircular(curve);
  if (!arc) return;
  const ZnGeVector3d view = ZnGePlane(arc->center(), arc->normal()).project(lastPoint) - arc->center();
  const double distance = view.length();
  if (distance <= arc->radius() || arc->radius() <= 0.0) return;
  const double angle = std::acos(arc->radius() / distance);
  for (const double turn : {angle, -angle}) {
    ZnGeVector3d toTouch = view * (arc->radius() / distance);
    const ZnGePoint3d touch = arc->center() + toTouch.rotateBy(turn, arc->normal());
    if (curve.isOn(touch)) addOnce(points, touch);
  }
}

struct Mode {
  ZnDb::ObjectSnapMode mode;
  void (*add)(const ZnGeCurve3d& curve, const ZnGePoint3d& lastPoint, Points& points);
};
constexpr Mode kModes[] = {
    {ZnDb::kSnapEnd, addEnds},
    {ZnDb::kSnapMiddle, addMiddle},
    {ZnDb::kSnapCenter, addCenter},
    {ZnDb::kSnapQuadrant, addQuadrants},
    {ZnDb::kSnapPerpendicular, addPerpendicular},
    {ZnDb::kSnapTangent, addTangent},
};

} // namespace

void zndbAppendSnapPoints(ZnDb::ObjectSnapMode mode, const std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces,
                          const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint, Points& snapPoints) {
  Points found;
  if (mode == ZnDb::kSnapNearest) {
    for (const auto& piece : pieces) {
      const ZnGePoint3d point = piece->closestPointTo(pickPoint);
      if (found.isEmpty())
        found.append(point);
      else if (point.distanceTo(pickPoint) < found[0].distanceTo(pickPoint))
        found[0] = point;
    }
  }
  for (const Mode& entry : kModes) {
    if (entry.mode != mode) continue;
    for (const auto& piece : pieces) entry.add(*piece, lastPoint, found);
  }
  snapPoints.append(found);
}
