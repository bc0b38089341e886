#include "torvi/centermark/mark_curves.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "torvi/centermark/object_wrapper.h"
#include "torvi/centermark/size_calculator.h"
#include "torvi/core/object_pointer.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/shapes.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

namespace {

double toFullTurn(double angle) {
  const double turned = std::fmod(angle, torvi::kFullTurn);
  return turned < 0.0 ? turned + torvi::kFullTurn : turned;
}

// Where a mark's center lies on the circle around its pattern's center.
struct PitchPosition {
  PitchPosition(const ZnGePoint3d& patternCenter, const ZnGePoint3d& center, const ZnGeVector3d& normal,
                const ZnGeVector3d& reference)
      : radius(patternCenter.distanceTo(center))
      , angle(reference.angleTo(center - patternCenter, normal)) {}
  double radius = 0.0;
  double angle = 0.0; // from the reference, about the normal
};

// How far each line is drawn from the center.
ZnCenterMarkArmLengths reachesOf(const IZnDbCenterMarkPropsProvider& provider, const ZnGeCircArc3d& circle,
                                 const ZnCenterMarkArmLengths& armLengths, const ZnGePoint3d* patternCenter) {
  const bool stored = !provider.objectId().isNull();
  const double offset = stored && patternCenter ? patternCenter->distanceTo(circle.center()) : 0.0;
  // The style is asked only for a line that says nothing itself.
  const auto unset = [&] { return circle.radius() + ZnTorviStyle::getCenterOvershoot(); };
  const double refRadius = stored ? provider.refCircleRadius() : 0.0;
  ZnCenterMarkArmLengths reaches;
  for (size_t i = 0; i < reaches.size(); ++i) {
    const double arm = armLengths[i];
    if (arm < 0.0 && stored) {
      const auto type = static_cast<ZnCenterMarkSubEntType>(static_cast<int>(-arm));
      reaches[i] = provider.extensionLength(type, refRadius) + provider.overshoot(type) - offset;
    } else {
      reaches[i] = arm < 0.0 || arm == kArmUnset ? unset() : arm;
    }
  }
  return reaches;
}

// A line too short to leave the gap touches the end of the arm instead.
double startOf(double reach, const ZnDbCenterMarkSizeCalculator& sizes) {
  const double arm = sizes.crossLength * 0.5;
  const double start = sizes.crossGap + arm;
  const double slack = ZnGeContext::gTol.equalPoint() + kCoordinateRounding * start;
  return start <= reach + slack ? start : arm;
}

// What the lines are laid along; see buildCenterMarkCurves.
struct MarkFrame {
  const ZnGeCircArc3d& circle;
  const ZnGeVector3d &normal, &x, &y;
  const ZnGePoint3d* patternCenter;
};

void appendCrossHair(ZnArray<ZnGeCurve3d*>& curves, const ZnDbCenterMarkSizeCalculator& sizes,
                     const MarkFrame& frame) {
  const double half = sizes.crossLength * 0.5;
  const ZnGePoint3d& center = frame.circle.center();
  if (frame.patternCenter) {
    const PitchPosition at(*frame.patternCenter, center, frame.normal, frame.x);
    const double halfAngle = chordToArcAngle(half, at.radius);
    curves.append(new ZnGeCircArc3d(*frame.patternCenter, frame.normal, frame.x, at.radius,
                                    toFullTurn(at.angle - halfAngle), toFullTurn(at.angle + halfAngle)));
  } else {
    curves.append(new ZnGeLineSeg3d(center - frame.x * half, center + frame.x * half));
  }
  curves.append(new ZnGeLineSeg3d(center - frame.y * half, center + frame.y * half));
}

void appendExtensions(ZnArray<ZnGeCurve3d*>& curves, const ZnDbCenterMarkSizeCalculator& sizes,
                      const ZnCenterMarkArmLengths& reaches, const MarkFrame& frame) {
  for (size_t i = 0; i < reaches.size(); ++i) {
    const double reach = reaches[i], start = startOf(reach, sizes);
    const bool horizontal = i < 2, towardsMinus = i % 2 == 0;
    curves.append(makeCenterMarkCurve(frame.circle.center(), horizontal ? frame.patternCenter : nullptr,
                                      frame.normal, horizontal ? frame.x : frame.y,
                                      towardsMinus ? -reach : start, towardsMinus ? -start : reach,
                                      reach <= 0.0));
  }
}

// Both halves need the same sizes, and to resolve their expressions is not cheap.
void appendMark(ZnArray<ZnGeCurve3d*>& curves, const IZnDbCenterMarkPropsProvider& provider,
                const MarkFrame& frame, const ZnCenterMarkArmLengths& armLengths) {
  ZnDbCenterMarkSizeCalculator sizes(provider);
  if (sizes.calculateSizes(frame.circle.radius()) != Quorl::eOk) return;
  appendCrossHair(curves, sizes, frame);
  appendExtensions(curves, sizes, reachesOf(provider, frame.circle, armLengths, frame.patternCenter), frame);
}

} // namespace

ErrorStatus generateCenterMarkCurves(ZnArray<ZnGeCurve3d*>& curves,
                                     const IZnDbCenterMarkPropsProvider& provider,
                                     const ZnGeMatrix3d* transform) {
  const ZnDbTorviObjectPointer<ZnDbCenterMarkObjectWrapper> mark(provider.objectId());
  if (mark.openStatus() != Quorl::eOk) return mark.openStatus();
  ZnGeCircArc3d circle;
  if (const ErrorStatus status = mark->getRefCircle(circle); status != Quorl::eOk) return status;
  return generateCenterMarkCurves(curves, provider, transform ? *transform : mark->blockTransform(), circle);
}

ErrorStatus generateCenterMarkCurves(ZnArray<ZnGeCurve3d*>& curves,
                                     const IZnDbCenterMarkPropsProvider& provider,
                                     const ZnGeMatrix3d& transform, const ZnGeCircArc3d& referenceCircle) {
  ZnGeCircArc3d circle = referenceCircle;
  circle.transformBy(transform.inverse());
  if (circle.radius() == 0.0) return Quorl::eInvalidInput;
  ZnGePoint3d origin;
  ZnGeVector3d x = ZnGeVector3d::kXAxis, y = ZnGeVector3d::kYAxis, z;
  // There the reference moves without turning, so the lines themselves carry the rotation.
  if (hostDocumentKindQuery()) transform.getCoordSystem(origin, x, y, z);
  y = y.normal(ZnGeContext::gTol);
  appendMark(curves, provider, {circle, circle.normal(), x, y, nullptr}, kStoredArmLengths);
  return Quorl::eOk;
}

ErrorStatus buildCenterMarkCurves(ZnArray<ZnGeCurve3d*>& curves, const IZnDbCenterMarkPropsProvider& provider,
                                  const ZnGeCircArc3d& circle, const ZnGeVector3d& normal,
                                  const ZnGeVector3d& x, const ZnGeVector3d* y,
                                  const ZnCenterMarkArmLengths& armLengths,
                                  const ZnGePoint3d* patternCenter) {
  if (circle.radius() == 0.0) return Quorl::eInvalidInput;
  ZnGeVector3d second = normal.crossProduct(x);
  if (y)
    second = y->normal(ZnGeContext::gTol);
  else if (patternCenter)
    second = (circle.center() - *patternCenter).normal(ZnGeContext::gTol);
  appendMark(curves, provider, {circle, normal, x, second, patternCenter}, armLengths);
  return Quorl::eOk;
}

ErrorStatus addCrossHairCurves(ZnArray<ZnGeCurve3d*>& curves, const IZnDbCenterMarkPropsProvider& provider,
                               const ZnGeCircArc3d& circle, const ZnGeVector3d& normal, const ZnGeVector3d& x,
                               const ZnGeVector3d& y, const ZnGePoint3d* patternCenter) {
  ZnDbCenterMarkSizeCalculator sizes(provider);
  if (const ErrorStatus status = sizes.calculateSizes(circle.radius()); status != Quorl::eOk) return status;
  appendCrossHair(curves, sizes, {circle, normal, x, y, patternCenter});
  return Quorl::eOk;
}

ErrorStatus addExtensionCurves(ZnArray<ZnGeCurve3d*>& curves, const IZnDbCenterMarkPropsProvider& provider,
                               const ZnGeCircArc3d& circle, const ZnGeVector3d& normal, const ZnGeVector3d& x,
                               const ZnGeVector3d& y, const ZnCenterMarkArmLengths& armLengths,
                               const ZnGePoint3d* patternCenter) {
  ZnDbCenterMarkSizeCalculator sizes(provider);
  if (const ErrorStatus status = sizes.calculateSizes(circle.radius()); status != Quorl::eOk) return status;
  appendExtensions(curves, sizes, reachesOf(provider, circle, armLengths, patternCenter),
                   {circle, normal, x, y, patternCenter});
  return Quorl::eOk;
}

ZnGeCurve3d* makeCenterMarkCurve(const ZnGePoint3d& center, const ZnGePoint3d* patternCenter,
                                 const ZnGeVector3d& normal, const ZnGeVector3d& direction, double from,
                                 double to, bool degenerate) {
  if (degenerate) return new ZnGeLine3d;
  if (!patternCenter) return new ZnGeLineSeg3d(center + direction * from, center + direction * to);
  const PitchPosition at(*patternCenter, center, normal, direction);
  double start = chordToArcAngle(from, at.radius) + at.angle;
  double end = chordToArcAngle(to, at.radius) + at.angle;
  // A line shorter than the arm of the cross runs backwards; an arc can't, it would take the long way round.
  if (start > end) std::swap(start, end);
  return new ZnGeCircArc3d(*patternCenter, normal, direction, at.radius, start, end);
}

double chordToArcAngle(double chord, double radius) {
  if (radius <= 0.0) return 0.0;
  const double half = chord * 0.5;
  if (radius > std::fabs(half)) return 2.0 * std::asin(half / radius);
  return half > 0.0 ? std::numbers::pi : -std::numbers::pi;
}
