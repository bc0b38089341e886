#include "companion/corner_relief.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "companion/tolerance.h"

namespace companion {

namespace {

// A straight neighbour of the arc, seen from where it touches the arc.
struct Neighbour {
  ZnGePoint3d end;
  ZnGeVector3d inward; // unit, the way on into the loop
  double length = 0.0;
};

std::optional<Neighbour> neighbourOf(const ZnDbEntity& entity, const ZnDbSubentId& subent,
                                     const ZnGePoint3d& end) {
  const std::unique_ptr<ZnGeCurve3d> curve = entity.subentCurve(subent);
  if (!curve || !curve->isKindOf(ZnGe::kLineSeg3d)) return std::nullopt;
  const auto& line = static_cast<const ZnGeLineSeg3d&>(*curve);
  const bool isAtEnd = line.endPoint().isEqualTo(end);
  if (!isAtEnd && !line.startPoint().isEqualTo(end)) return std::nullopt;
  const double length = line.length();
  if (length <= ZnGeContext::gTol.equalPoint()) return std::nullopt;
  return Neighbour{end, (isAtEnd ? line.span() : -line.span()) / length, length};
}

// Where the two would meet, going on; none for such as run side by side, on one line or apart.
std::optional<ZnGePoint3d> cornerOf(const Neighbour& one, const Neighbour& other) {
  const ZnGeVector3d normal = one.inward.crossProduct(other.inward);
  const double sine = normal.length();
  if (sine < kLeastCornerSine) return std::nullopt;
  const ZnGeVector3d between = other.end - one.end;
  const double onOne = between.crossProduct(other.inward).dotProduct(normal) / (sine * sine);
  const double onOther = between.crossProduct(one.inward).dotProduct(normal) / (sine * sine);
  if (onOne < 0.0 || onOther < 0.0) return std::nullopt;
  return one.end + one.inward * onOne;
}

} // namespace

bool isCornerRelief(const RoundEdge& edge) {
  ZnDbHolder<ZnDbEntity> entity(edge.path.objectIds().last());
  ZnArray<ZnDbSubentId> edges;
  if (entity.isOpen()) entity->getSubentIds(ZnDb::kEdgeSubentType, edges);
  const int count = edges.length();
  int place = 0;
  while (place < count && edges[place] != edge.path.subentId()) ++place;
  if (place == count || count < 3) return false;

  // In the entity's own coordinates: a round edge is seen through similarities only, which change no answer.
  const std::unique_ptr<ZnGeCurve3d> own = entity->subentCurve(edges[place]);
  if (!own || !own->isKindOf(ZnGe::kCircularArc3d)) return false;
  const auto& arc = static_cast<const ZnGeCircArc3d&>(*own);
  const ZnDbSubentId& before = edges[(place + count - 1) % count];
  const ZnDbSubentId& after = edges[(place + 1) % count];
  ZnGePoint3d first = arc.startPoint(), second = arc.endPoint();
  // Arcs count counterclockwise; the outline may run the other way.
  if (!neighbourOf(*entity, before, first)) std::swap(first, second);
  const std::optional<Neighbour> into = neighbourOf(*entity, before, first);
  const std::optional<Neighbour> outOf = neighbourOf(*entity, after, second);
  if (!into || !outOf) return false;
  if (arc.radius() > kReliefShareOfNeighbour * std::min(into->length, outOf->length)) return false;
  const std::optional<ZnGePoint3d> corner = cornerOf(*into, *outOf);
  return corner && corner->distanceTo(arc.center()) <= arc.radius() * (1.0 + kReliefReach);
}

} // namespace companion
