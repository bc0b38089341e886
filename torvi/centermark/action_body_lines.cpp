// The part of the body that deals with geometry: the circle that a mark follows, and the lines it shows.
#include <memory>

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/centermark/size_calculator.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/drawing/shapes.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbCenterMarkActionBody::getRefCircle(ZnGeCircArc3d& circle) const {
  if (!isAssociative(false)) {
    circle = getCachedRefCircle();
    return Quorl::eOk;
  }
  if (edgeRefCount() != 1) return Quorl::eInvalidInput;
  const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(getInputEdge(0), true));
  if (!curve || !curve->isKindOf(ZnGe::kCircularArc3d)) return Quorl::eInvalidInput;
  circle = static_cast<const ZnGeCircArc3d&>(*curve);
  return Quorl::eOk;
}

ZnGeCircArc3d ZnDbCenterMarkActionBody::getCachedRefCircle() const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObjectId());
  if (!reference.isOpen()) return {};
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  reference->blockTransform().getCoordSystem(origin, x, y, z);
  return {origin, z, cachedCircleRadius()};
}

double ZnDbCenterMarkActionBody::getRefCircleRadius() const {
  ZnGeCircArc3d circle;
  return getRefCircle(circle) == Quorl::eOk ? circle.radius() : 0.0;
}

ErrorStatus ZnDbCenterMarkActionBody::getCrossLengthAndGap(double& length, double& gap) const {
  return getCrossLengthAndGapFromProvider(ZnDbCenterMarkPropsProvider(centerObjectId()), length, gap, 0.0);
}

double ZnDbCenterMarkActionBody::getMinExtension(ZnCenterMarkSubEntType) const {
  double length = 0.0, gap = 0.0;
  return getCrossLengthAndGap(length, gap) == Quorl::eOk ? length * 0.5 : 0.0;
}

ZnGeVector3d ZnDbCenterMarkActionBody::getSubentDirection(ZnCenterMarkSubEntType type) const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObjectId());
  if (!reference.isOpen()) return ZnGeVector3d::kXAxis;
  static constexpr ZnGeVector3d kDirections[] = {ZnGeVector3d::kXAxis,  ZnGeVector3d::kYAxis,
                                                 -ZnGeVector3d::kXAxis, ZnGeVector3d::kXAxis,
                                                 -ZnGeVector3d::kYAxis, ZnGeVector3d::kYAxis};
  const bool known = type >= eCrossHairHorizontalLine && type <= eTopLine;
  return reference->blockTransform() * (known ? kDirections[type] : ZnGeVector3d::kXAxis);
}

ZnGeLineSeg3d ZnDbCenterMarkActionBody::getSubentLineGeometry(ZnCenterMarkSubEntType type,
                                                              bool includeOvershoot) const {
  ZnArray<ZnDbObjectId> ids;
  ZnArray<ZnGeCurve3d*> curves;
  if (torvi::curvesOfReference(centerObjectId(), ids, false) == Quorl::eOk) getCenterObjGeometry(ids, curves);
  const ZnGeLineSeg3d line = getSubentLineGeometry(curves, type, includeOvershoot);
  ZnDbTorviActionBodyUtils::deleteCurves(curves);
  return line;
}

// The far end of the left and bottom lines is their start, that of the right and top lines their end.
ZnGeLineSeg3d ZnDbCenterMarkActionBody::getSubentLineGeometry(const ZnArray<ZnGeCurve3d*>& curves,
                                                              ZnCenterMarkSubEntType type,
                                                              bool includeOvershoot) const {
  if (type < 0 || type >= curves.length()) return {};
  ZnDbHolder<ZnDbBlockReference> reference(centerObjectId());
  if (!reference.isOpen()) return {};
  ZnGeLineSeg3d line;
  const ZnGeCurve3d* curve = curves[type];
  if (curve && curve->isKindOf(ZnGe::kLineSeg3d)) line = static_cast<const ZnGeLineSeg3d&>(*curve);
  line.transformBy(reference->blockTransform());
  if (includeOvershoot) return line;
  const bool farEndIsStart = type == eLeftLine || type == eBottomLine;
  const double cut = -overshoot(type);
  torvi::extendLine(line, farEndIsStart ? cut : 0.0, farEndIsStart ? 0.0 : cut);
  return line;
}
