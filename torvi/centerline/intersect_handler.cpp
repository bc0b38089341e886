#include "torvi/centerline/handlers.h"

#include <algorithm>
#include <utility>

#include "torvi/core/tolerance.h"

using Quorl::ErrorStatus;

namespace {

using Endings = ZnDbCenterLineGeometryHandler::Endings;

// Whether the lines meet is asked of the same two edges before anything is calculated, so the answer here is
// known and the flag says nothing new. The origin is what is left for a caller who comes with skew edges.
ZnGePoint3d meetingPoint(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second) {
  ZnGePoint3d point = ZnGePoint3d::kOrigin;
  first.intersectWith(second, point, centerLineTolerance());
  return point;
}

ZnGeVector3d rayAlong(const ZnGeLineSeg3d& edge, bool toEnd, const ZnGePoint3d& meeting) {
  const ZnGePoint3d start = edge.startPoint(), end = edge.endPoint();
  ZnGePoint3d target = toEnd ? end : start;
  if (target.isEqualTo(meeting, ZnGeContext::gTol))
    target = start.distanceTo(meeting) > end.distanceTo(meeting) ? start : end;
  return target - meeting;
}

bool pointsToEnd(const Endings& endings, int edge) { return edge >= endings.length() || endings[edge] != 0; }

// The ends of an edge, in the order in which its ray runs.
struct OrderedEnds {
  OrderedEnds(const ZnGeLineSeg3d& edge, const ZnGeVector3d& ray)
      : near(edge.startPoint())
      , far(edge.endPoint()) {
    const ZnGeVector3d along = edge.direction();
    if (along.length() > 0.0 && !along.isCodirectionalTo(ray, ZnGeContext::gTol)) std::swap(near, far);
  }
  ZnGePoint3d near, far;
};

// Where the bisector crosses the chord between two ends; the fallback where it passes beside it. Ends that
// are one point have no chord.
ZnGePoint3d crossingWithChord(const ZnGeLine3d& bisector, const ZnGePoint3d& from, const ZnGePoint3d& to,
                              const ZnGePoint3d& fallback) {
  if (from.isEqualTo(to, ZnGeContext::gTol)) return fallback;
  const ZnGeLineSeg3d chord(from, to);
  ZnGePoint3d crossing;
  if (!bisector.intersectWith(chord, crossing, centerLineTolerance())) return fallback;
  // The crossing is on the chord's line but for rounding, which grows with the edges.
  const double size = std::max(from.distanceTo(fallback), to.distanceTo(fallback));
  ZnGeTol onChord = ZnGeContext::gTol;
  onChord.setEqualPoint(std::max(onChord.equalPoint(), kLeastScaledTolerance * size));
  return chord.isOn(crossing, onChord) ? crossing : fallback;
}

// Unit vectors along the rays sum up to their bisector, which is how the endings choose between the two
// bisectors of a pair of lines.
ZnGeLineSeg3d pieceOfBisector(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second,
                              const Endings& endings) {
  const ZnGePoint3d meeting = meetingPoint(first, second);
  const ZnGeVector3d ray0 = rayAlong(first, pointsToEnd(endings, 0), meeting);
  const ZnGeVector3d ray1 = rayAlong(second, pointsToEnd(endings, 1), meeting);
  const ZnGeLine3d bisector(meeting, ray0.normal(ZnGeContext::gTol) + ray1.normal(ZnGeContext::gTol));
  const OrderedEnds ends0(first, ray0), ends1(second, ray1);
  return {crossingWithChord(bisector, ends0.near, ends1.near, meeting),
          crossingWithChord(bisector, ends0.far, ends1.far, meeting)};
}

ZnGeLineSeg3d moved(const ZnGeLineSeg3d& edge, const ZnGeVector3d& by) {
  return {edge.startPoint() + by, edge.endPoint() + by};
}

} // namespace

bool ZnDbCenterLineIntersectHandler::canHandle(const Edges& edges, const Endings&,
                                               const ZnGeLineSeg3d*) const {
  ZnGePoint3d point;
  return !hasPoint(edges) && edges[0]->intersectWith(*edges[1], point, centerLineTolerance());
}

void ZnDbCenterLineIntersectHandler::rayDirections(const Edges& edges, const Endings& endings,
                                                   ZnGeVector3d (&rays)[2]) {
  const ZnGePoint3d meeting = meetingPoint(*edges[0], *edges[1]);
  for (int i = 0; i < 2; ++i) rays[i] = rayAlong(*edges[i], pointsToEnd(endings, i), meeting);
}

// Worked out about the first edge's start: far from the drawing's origin coordinates have not the digits left
// that telling whether a crossing lies on a chord takes. Skew edges stay, since their point is the origin.
ErrorStatus ZnDbCenterLineIntersectHandler::calculate(const Edges& edges, const Endings& endings,
                                                      ZnGeLineSeg3d*& out) const {
  if (out) return Quorl::eOk;
  ZnGePoint3d meeting;
  const bool meet = edges[0]->intersectWith(*edges[1], meeting, centerLineTolerance());
  const ZnGeVector3d base = meet ? edges[0]->startPoint().asVector() : ZnGeVector3d::kIdentity;
  const ZnGeLineSeg3d piece = pieceOfBisector(moved(*edges[0], -base), moved(*edges[1], -base), endings);
  out = new ZnGeLineSeg3d(moved(piece, base));
  return Quorl::eOk;
}
