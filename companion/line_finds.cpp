#include "companion/line_finds.h"

#include <cmath>
#include <unordered_map>

#include "companion/center_bodies.h"
#include "companion/line_commands.h"
#include "companion/object_naming.h"
#include "companion/visible_entities.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

namespace companion {

namespace {

// An edge's name, the same for each who refers to it.
std::string keyOf(const ZnDbCompoundObjectId& entity, const ZnDbSubentId& subent) {
  return pathText(entity) + ':' + std::to_string(subent.index());
}

// The center lines of a space, by the edges that they stand between.
class LinesThere {
public:
  explicit LinesThere(ZnDbObjectId space) {
    visitCenterBodies(space, [this](const ZnDbTorviActionBody& body) {
      ZnArray<ZnDbEdgeRef> edges;
      if (ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(body.objectId()) != kCenterLine ||
          body.getEdgeRefs(edges) != Quorl::eOk)
        return;
      for (const ZnDbEdgeRef& edge : edges)
        lines_[keyOf(edge.entity(), edge.subentId())].push_back(body.centerObjectId());
    });
  }

  // The line that stands between both edges; null for none.
  ZnDbObjectId between(const ZnDbFullSubentPath& one, const ZnDbFullSubentPath& other) const {
    for (const ZnDbObjectId id : of(one))
      for (const ZnDbObjectId same : of(other))
        if (id == same) return id;
    return {};
  }

private:
  std::vector<ZnDbObjectId> of(const ZnDbFullSubentPath& path) const {
    const auto found = lines_.find(keyOf(ZnDbCompoundObjectId(path), path.subentId()));
    return found == lines_.end() ? std::vector<ZnDbObjectId>() : found->second;
  }

  std::unordered_map<std::string, std::vector<ZnDbObjectId>> lines_;
};

exchange::NumberedEdge edgeEntry(const ZnDbFullSubentPath& path) {
  return {pathText(ZnDbCompoundObjectId(path)), static_cast<int>(path.subentId().index())};
}

// What a find tells, with its line, which is made where it is not there.
exchange::AnnotatedLine lineOf(ZnDbDatabase& database, const LinesThere& there, const ZnDbFullSubentPath& one,
                               const ZnDbFullSubentPath& other, exchange::AnnotateOutcome& outcome) {
  exchange::AnnotatedLine told;
  ZnDbObjectId line = there.between(one, other);
  told.isNew = line.isNull();
  ZnString why;
  if (told.isNew) {
    if (createLine(database, {{one, other}, {}}, line, why) == Quorl::eOk)
      outcome.created.push_back(nameOf(line));
    else
      outcome.failures.push_back({"center line", pathText(ZnDbCompoundObjectId(one)), why.utf8()});
  }
  if (!line.isNull()) told.handle = nameOf(line);
  told.edges = {edgeEntry(one), edgeEntry(other)};
  return told;
}

// The middles of texts and of all else that has no edges of its own.
std::vector<ZnGePoint3d> contentWithoutEdges(ZnDbObjectId space) {
  std::vector<ZnGePoint3d> places;
  visitVisibleEntities(space, [&places](const VisibleEntity& visible) {
    ZnArray<ZnDbSubentId> edges;
    visible.entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
    ZnGeBoundBlock3d box;
    if (!edges.isEmpty() || visible.entity.getGeomExtents(box) != Quorl::eOk) return;
    places.push_back(box.center());
    places.back().transformBy(visible.toSpace);
  });
  return places;
}

double directionOf(const Slot& slot) {
  const ZnGeVector3d along = slot.ends[1].center - slot.ends[0].center;
  return along.x == 0.0 ? ZnGe::kPi / 2.0 : std::atan(along.y / along.x);
}

} // namespace

LineFinds::LineFinds(const exchange::AnnotateWish& wish, ZnDbObjectId space,
                     const std::vector<RoundEdge>& round, double minRadius, double maxRadius)
    : space_(space)
    , round_(round) {
  if (wish.centerLines || wish.strips) straight_ = visibleStraightEdges(space);
  if (wish.strips) strips_ = findStrips(straight_, round, contentWithoutEdges(space));
  if (wish.centerLines) slots_ = findSlots(straight_, round);
  std::erase_if(slots_, [&](const Slot& slot) { return slot.radius < minRadius || slot.radius > maxRadius; });
  for (const Slot& slot : slots_)
    for (const SlotEnd& end : slot.ends)
      slotEnds_.emplace(&round_[static_cast<size_t>(end.arcs.front())], directionOf(slot));
}

double LineFinds::slotDirection(const RoundEdge& edge) const {
  const auto found = slotEnds_.find(&edge);
  return found == slotEnds_.end() ? 0.0 : found->second;
}

void LineFinds::make(ZnDbDatabase& database, exchange::AnnotateOutcome& outcome) const {
  const LinesThere there(space_);
  const auto between = [&](const int(&sides)[2]) {
    return lineOf(database, there, straight_[static_cast<size_t>(sides[0])].path,
                  straight_[static_cast<size_t>(sides[1])].path, outcome);
  };
  for (const Slot& slot : slots_) {
    exchange::AnnotatedLine told = between(slot.sides);
    told.ends.emplace();
    for (const SlotEnd& end : slot.ends)
      for (const int arc : end.arcs)
        told.ends->ends.push_back(edgeEntry(round_[static_cast<size_t>(arc)].path));
    told.evidence =
        ZnString()
            .format(L"two sides of %.6g joined by half circles of radius %.6g", slot.length, slot.radius)
            .utf8();
    outcome.slots.push_back(std::move(told));
  }
  for (const Strip& strip : strips_) {
    exchange::AnnotatedLine told = between(strip.sides);
    told.evidence = ZnString().format(L"a bare rectangle of %.6g by %.6g", strip.length, strip.width).utf8();
    outcome.strips.push_back(std::move(told));
  }
}

} // namespace companion
