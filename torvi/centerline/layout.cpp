#include "torvi/centerline/layout.h"

#include <cmath>

#include "torvi/centerline/direction_marks.h"
#include "torvi/centerline/geometry_generator.h"
#include "torvi/core/action_body.h"
#include "torvi/core/edge_relations.h"
#include "torvi/core/reference_transform.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/blocks.h"

using Quorl::ErrorStatus;

ZnDbCenterLineLayout::ZnDbCenterLineLayout(ZnDbObjectId centerObject)
    : ZnDbTorviLayout(centerObject) {}

ZnDbCenterLineLayout::~ZnDbCenterLineLayout() = default;

ZnDbCenterLineObjectWrapper* ZnDbCenterLineLayout::wrapper() const {
  if (!wrapper_) wrapper_.emplace(centerObject());
  return wrapper_->object();
}

ErrorStatus ZnDbCenterLineLayout::createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>&) {
  entities.append(new ZnDbLine);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterLineLayout::evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>&) {
  scaleExtensions();
  ZnGeLineSeg3d line;
  if (calculateCenterLine(curves, line) != Quorl::eOk) return Quorl::eInvalidInput;
  // A line that follows nothing is drawn from what is remembered: measuring it anew would make it creep.
  if (wrapper()->isFullyAssociative()) {
    wrapper()->setCachedCenterLineLength(line.length());
    wrapper()->setCachedCenterLineDirection(line.span().normal(ZnGeContext::gTol));
  } else if (const ZnGeVector3d along = freeDirection(); !along.isZeroLength()) {
    wrapper()->setCachedCenterLineDirection(along);
  }
  rematchExtensions(line);
  applyExtensions(curves);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterLineLayout::compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>&) {
  ZnGeLineSeg3d line;
  if (calculateCenterLine(curves, line) != Quorl::eOk) return Quorl::eInvalidInput;
  return applyExtensions(curves);
}

ErrorStatus ZnDbCenterLineLayout::calculateCenterLine(ZnArray<ZnGeCurve3d*>& curves, ZnGeLineSeg3d& line) {
  if (!wrapper()) return Quorl::eInvalidInput;
  if (!wrapper()->isFullyAssociative()) {
    line = unassociatedGeometry(line);
    curves.append(new ZnGeLineSeg3d(line));
    return Quorl::eOk;
  }
  ZnGeVector3d base;
  if (const ErrorStatus status = lineBetweenEdges(curves, base); status != Quorl::eOk) return status;
  auto* raw = static_cast<ZnGeLineSeg3d*>(curves[0]);
  const ZnGeVector3d toPlace = raw->midPoint().asVector();
  transform_.setToTranslation(toPlace + base);
  keepDirection(*raw);
  raw->set(raw->startPoint() - toPlace, raw->endPoint() - toPlace);
  line = *raw;
  return Quorl::eOk;
}

// The line between two points is so short that far from the origin no coordinates are left to tell its
// direction: it is worked out about their middle. Lines between real edges are as long as these and stay
// where they are, since the size of coordinates tells what rounding they carry.
ErrorStatus ZnDbCenterLineLayout::lineBetweenEdges(ZnArray<ZnGeCurve3d*>& curves, ZnGeVector3d& base) const {
  constexpr int kEdges = 2;
  ZnArray<ZnGeLineSeg3d> segments;
  if (getInputLineSegments(*wrapper(), segments) != kEdges) return Quorl::eInvalidInput;
  ZnArray<int> endings;
  const ErrorStatus status = wrapper()->edgeRefDirEndingArray(endings);
  if (status != Quorl::eOk) return status;
  const ZnGePoint3d first = segments[0].startPoint(), second = segments[1].startPoint();
  const bool arePoints = segments[0].isDegenerate() && segments[1].isDegenerate();
  if (arePoints && !torvi::isSamePoint(first, second))
    base = ZnGeLineSeg3d(first, second).midPoint().asVector();
  for (ZnGeLineSeg3d& segment : segments) segment.set(segment.startPoint() - base, segment.endPoint() - base);
  ZnArray<const ZnGeCurve3d*> inputs(segments.length());
  for (const ZnGeLineSeg3d& segment : segments) inputs.append(&segment);
  return ZnDbCenterLineGeometryGenerator(endings).generateGeometry(curves, inputs);
}

// What is remembered, where the reference stands and turned as it is turned: start and end stay where the
// user turned them, however far. A reference that can't be read leaves what the caller holds.
ZnGeLineSeg3d ZnDbCenterLineLayout::unassociatedGeometry(const ZnGeLineSeg3d& held) {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject());
  if (!reference.isOpen()) return held;
  transform_.setToTranslation(reference->position().asVector());
  const ZnGeVector3d half = freeDirection() * (wrapper()->cachedCenterLineLength() * 0.5);
  return {ZnGePoint3d::kOrigin - half, ZnGePoint3d::kOrigin + half};
}

// The block of a line is not turned but by the user. One that was never evaluated has no direction to
// remember; what is drawn tells it, if need be with what is drawn past the extensions.
ZnGeVector3d ZnDbCenterLineLayout::freeDirection() const {
  ZnGeMatrix3d turned = wrapper()->blockTransform();
  turned.setTranslation({});
  const ZnGeVector3d before = wrapper()->cachedCenterLineDirection();
  if (!before.isZeroLength(ZnGeContext::gTol))
    return torvi::areExactlyEqual(turned, ZnGeMatrix3d::kIdentity)
               ? before
               : (turned * before).normal(ZnGeContext::gTol);
  ZnGeLineSeg3d drawn;
  if (wrapper()->getCenterLineGeometry(drawn, false) != Quorl::eOk) return {};
  if (drawn.length() <= centerLineTolerance().equalPoint()) wrapper()->getCenterLineGeometry(drawn, true);
  return drawn.span().normal(ZnGeContext::gTol);
}

// Start and end carry lengths of their own: a line that turned round would exchange them. The raw direction
// comes from the order and sense of the edges, which a user may change. At a right angle nothing tells which
// way was meant.
void ZnDbCenterLineLayout::keepDirection(ZnGeLineSeg3d& line) const {
  if (torvi::isNotToKeepDirection(centerObject())) return;
  ZnGeVector3d before = wrapper()->cachedCenterLineDirection();
  if (before.isZeroLength(ZnGeContext::gTol)) return;
  if (torvi::isMirrored(centerObject())) before = wrapper()->blockTransform() * before;
  const ZnGeVector3d now = (line.endPoint() - line.startPoint()).normal(ZnGeContext::gTol);
  if (before.dotProduct(now) < -ZnGeContext::gTol.equalPoint()) line.reverseParam();
}

// Extensions count from the middle, so one that is shorter than half of the line shortens it.
ErrorStatus ZnDbCenterLineLayout::applyExtensions(ZnArray<ZnGeCurve3d*>& curves) const {
  if (!wrapper()) return Quorl::eInvalidInput;
  auto& line = static_cast<ZnGeLineSeg3d&>(*curves[0]);
  const double toStart = wrapper()->startExtension() + wrapper()->startOvershoot();
  const double toEnd = wrapper()->endExtension() + wrapper()->endOvershoot();
  const ZnGePoint3d middle = line.midPoint();
  const ZnGeVector3d along = line.span().normal(ZnGeContext::gTol);
  line.set(middle - along * toStart, middle + along * toEnd);
  return Quorl::eOk;
}

namespace {

// An extension as it is to be stored: one of just the half length follows the edges.
double rematched(double extension, double half) {
  const double slack = ZnGeContext::gTol.equalPoint() + kCoordinateRounding * half;
  const bool matches = std::fabs(extension - half) <= slack;
  return matches ? ZnDbTorviActionBody::kAutoMatchExtension : extension;
}

} // namespace

void ZnDbCenterLineLayout::rematchExtensions(const ZnGeLineSeg3d& line) const {
  const double half = line.length() * 0.5;
  const double start = wrapper()->startExtension(), end = wrapper()->endExtension();
  wrapper()->setStartExtension(rematched(start, half));
  wrapper()->setEndExtension(rematched(end, half));
}

// Keeps the proportions of a line without edges that the user scales: its place takes the scale away again.
void ZnDbCenterLineLayout::scaleExtensions() const {
  if (!wrapper() || wrapper()->isFullyAssociative()) return;
  ZnDbHolder<ZnDbBlockReference> reference(centerObject());
  if (!reference.isOpen()) return;
  const double scale = torvi::scaleOf(reference->blockTransform());
  if (scale == 1.0) return;
  const double start = wrapper()->startExtension(), end = wrapper()->endExtension();
  wrapper()->setStartExtension(start * scale);
  wrapper()->setEndExtension(end * scale);
}
