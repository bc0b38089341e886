#include "quorl/db/entity/curve.h"

#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/curve_snap.h"
#include "quorl/db/entity/curve_transform.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/spline.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/line_seg3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbCurve, ZnDbEntity)

namespace {

using Pieces = std::vector<std::unique_ptr<ZnGeCurve3d>>;

Pieces piecesOf(const ZnDbCurve& curve) {
  Pieces pieces;
  curve.appendPieces(pieces);
  return pieces;
}

} // namespace

ErrorStatus ZnDbCurve::getZnGeCurve(ZnGeCurve3d*& curve, const ZnGeTol&) const {
  curve = nullptr;
  Pieces pieces = piecesOf(*this);
  if (pieces.empty()) return Quorl::eDegenerateGeometry;
  if (pieces.size() > 1) return Quorl::eNotProvided;
  curve = pieces.front().release();
  return Quorl::eOk;
}

ErrorStatus ZnDbCurve::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  ZnGeBoundBlock3d box;
  for (const auto& piece : piecesOf(*this)) box.addBox(piece->boundBox());
  if (box.isEmpty()) return Quorl::eNothingToDo;
  extents = box;
  return Quorl::eOk;
}

// A simple curve is its own edge 0; an open one has its start as vertex 0 and its end as vertex 1.
void ZnDbCurve::getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const {
  if (type == ZnDb::kEdgeSubentType) ids.append(ZnDbSubentId(type, 0));
  if (type == ZnDb::kVertexSubentType && !isClosed())
    for (const int index : {0, 1}) ids.append(ZnDbSubentId(type, index));
}

std::unique_ptr<ZnGeCurve3d> ZnDbCurve::subentCurve(const ZnDbSubentId& id) const {
  if (id != ZnDbSubentId(ZnDb::kEdgeSubentType, 0)) return nullptr;
  Pieces pieces = piecesOf(*this);
  return pieces.size() == 1 ? std::move(pieces.front()) : nullptr;
}

bool ZnDbCurve::subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const {
  if (id.type() != ZnDb::kVertexSubentType || isClosed() || (id.index() != 0 && id.index() != 1))
    return false;
  const std::unique_ptr<ZnGeCurve3d> curve = subentCurve(ZnDbSubentId(ZnDb::kEdgeSubentType, 0));
  if (!curve) return false;
  const ZnGeInterval range = curve->interval();
  point = curve->evalPoint(id.index() == 0 ? range.lowerBound() : range.upperBound());
  return true;
}

std::unique_ptr<ZnDbEntity> ZnDbCurve::subentEntity(const ZnDbSubentId& id) const {
  const std::unique_ptr<ZnGeCurve3d> curve = subentCurve(id);
  ZnDbCurve* entity = nullptr;
  if (!curve || zndbConvertGelibCurveToZnDbCurve(*curve, entity, nullptr, ZnGeContext::gTol) != Quorl::eOk)
    return nullptr;
  entity->setPropertiesFrom(this);
  return std::unique_ptr<ZnDbEntity>(entity);
}

bool ZnDbCurve::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible) return false;
  const Pieces pieces = piecesOf(*this);
  if (pieces.empty()) return false;
  draw.setTraits(ownTraits());
  if (pieces.size() == 1) {
    draw.curve(*pieces.front());
    return true;
  }
  std::vector<const ZnGeCurve3d*> chain;
  for (const auto& piece : pieces) chain.push_back(piece.get());
  draw.chain(chain, isClosed());
  return true;
}

ErrorStatus ZnDbCurve::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t,
                                         const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                         const ZnGeMatrix3d&, ZnArray<ZnGePoint3d>& snapPoints,
                                         ZnArray<std::int64_t>&, const ZnGeMatrix3d& insertion) const {
  Pieces pieces = piecesOf(*this);
  if (&insertion != &ZnGeMatrix3d::kIdentity)
    for (auto& piece : pieces) piece = zndbTransformedCurve(*piece, insertion);
  zndbAppendSnapPoints(mode, pieces, pickPoint, lastPoint, snapPoints);
  return Quorl::eOk;
}

namespace {

ZnDbCurve* fromSegment(const ZnGeCurve3d& curve) {
  const auto& segment = static_cast<const ZnGeLineSeg3d&>(curve);
  return new ZnDbLine(segment.startPoint(), segment.endPoint());
}

// An arc's angles count from the x axis of its plane, those of the geometry curve from its reference vector.
ZnDbCurve* fromCircular(const ZnGeCurve3d& curve) {
  const auto& arc = static_cast<const ZnGeCircArc3d&>(curve);
  const double span = arc.endAng() - arc.startAng();
  if (span >= ZnGe::kTwoPi - ZnGeContext::gTol.equalVector())
    return new ZnDbCircle(arc.center(), arc.normal(), arc.radius());
  const double turn = arc.normal().perpVector().angleTo(arc.referenceVector(), arc.normal());
  const double start = ZnGe::normalizeAngle(turn + arc.startAng());
  return new ZnDbArc(arc.center(), arc.normal(), arc.radius(), start, start + span);
}

ZnDbCurve* fromElliptic(const ZnGeCurve3d& curve) {
  auto ellipse = std::make_unique<ZnDbEllipse>();
  if (ellipse->set(static_cast<const ZnGeEllipticalArc3d&>(curve)) == Quorl::eOk) return ellipse.release();
  // One without area covers the stretch that its samples reach.
  std::vector<ZnGePoint3d> samples;
  curve.appendSamplePoints(0.0, samples);
  if (samples.empty()) return nullptr;
  ZnGePoint3d start = samples.front(), end = samples.front();
  for (const ZnGePoint3d& point : samples)
    if (point.distanceTo(samples.front()) > start.distanceTo(samples.front())) start = point;
  for (const ZnGePoint3d& point : samples)
    if (point.distanceTo(start) > end.distanceTo(start)) end = point;
  return new ZnDbLine(start, end);
}

ZnDbCurve* fromSpline(const ZnGeCurve3d& curve) {
  auto spline = std::make_unique<ZnDbSpline>();
  const ErrorStatus status = spline->setCurve(static_cast<const ZnGeNurbCurve3d&>(curve));
  return status == Quorl::eOk ? spline.release() : nullptr;
}

struct Maker {
  ZnGe::EntityId kind;
  ZnDbCurve* (*make)(const ZnGeCurve3d& curve);
};
constexpr Maker kMakers[] = {
    {ZnGe::kLineSeg3d, fromSegment},
    {ZnGe::kCircularArc3d, fromCircular},
    {ZnGe::kEllipticalArc3d, fromElliptic},
    {ZnGe::kNurbCurve3d, fromSpline},
};

} // namespace

// Every kind of curve that an entity can show carries its plane with it, so that the normal is never missed.
ErrorStatus zndbConvertGelibCurveToZnDbCurve(const ZnGeCurve3d& curve, ZnDbCurve*& entity,
                                             const ZnGeVector3d*, const ZnGeTol&) {
  entity = nullptr;
  for (const Maker& maker : kMakers) {
    if (!curve.isKindOf(maker.kind)) continue;
    entity = maker.make(curve);
    return entity ? Quorl::eOk : Quorl::eDegenerateGeometry;
  }
  return Quorl::eNotProvided;
}
