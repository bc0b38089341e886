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
std::wstring keyOf(const ZnDbCompoundObjectId& entity, const ZnDbSubentId& subent) {
  return std::wstring(pathText(entity).view()) + L':' + std::to_wstring(subent.index());
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

  std::unordered_map<std::wstring, std::vector<ZnDbObjectId>> lines_;
};

ZnRxCommandValue edgeEntry(const ZnDbFullSubentPath& path) {
  ZnRxCommandValue entry = ZnRxCommandValue::object();
  entry[L"edge"] = pathText(ZnDbCompoundObjectId(path));
  entry[L"index"] = path.subentId().index();
  return entry;
}

// The entry of a find, with its line, which is made where it is not there.
ZnRxCommandValue entryOf(ZnRxCommandContext& context, ZnDbDatabase& database, const LinesThere& there,
                         const ZnDbFullSubentPath& one, const ZnDbFullSubentPath& other) {
  ZnRxCommandValue entry = ZnRxCommandValue::object();
  ZnDbObjectId line = there.between(one, other);
  entry[L"isNew"] = line.isNull();
  ZnString why;
  if (line.isNull()) {
    if (createLine(database, {{one, other}, {}}, line, why) == Quorl::eOk) {
      context.result()[L"created"].append(handleText(line.handle()));
    } else {
      ZnRxCommandValue& failure = context.result()[L"failures"].append(ZnRxCommandValue::object());
      failure[L"what"] = L"center line";
      failure[L"edge"] = pathText(ZnDbCompoundObjectId(one));
      failure[L"why"] = why;
    }
  }
  entry[L"handle"] = line.isNull() ? ZnRxCommandValue() : ZnRxCommandValue(handleText(line.handle()));
  for (const ZnDbFullSubentPath& path : {one, other}) entry[L"edges"].append(edgeEntry(path));
  return entry;
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

LineFinds::LineFinds(const ZnRxCommandContext& context, ZnDbObjectId space,
                     const std::vector<RoundEdge>& round, double minRadius, double maxRadius)
    : space_(space)
    , round_(round) {
  const bool wantsSlots = context.arguments().at(L"centerLines").asBool();
  const bool wantsStrips = context.arguments().at(L"strips").asBool();
  if (wantsSlots || wantsStrips) straight_ = visibleStraightEdges(space);
  if (wantsStrips) strips_ = findStrips(straight_, round, contentWithoutEdges(space));
  if (wantsSlots) slots_ = findSlots(straight_, round);
  std::erase_if(slots_, [&](const Slot& slot) { return slot.radius < minRadius || slot.radius > maxRadius; });
  for (const Slot& slot : slots_)
    for (const SlotEnd& end : slot.ends)
      slotEnds_.emplace(&round_[static_cast<size_t>(end.arcs.front())], directionOf(slot));
}

double LineFinds::slotDirection(const RoundEdge& edge) const {
  const auto found = slotEnds_.find(&edge);
  return found == slotEnds_.end() ? 0.0 : found->second;
}

void LineFinds::make(ZnRxCommandContext& context, ZnDbDatabase& database) const {
  const LinesThere there(space_);
  const auto sideOf = [this](int side) -> const ZnDbFullSubentPath& {
    return straight_[static_cast<size_t>(side)].path;
  };
  context.result()[L"slots"] = ZnRxCommandValue::array();
  for (const Slot& slot : slots_) {
    ZnRxCommandValue entry = entryOf(context, database, there, sideOf(slot.sides[0]), sideOf(slot.sides[1]));
    for (const SlotEnd& end : slot.ends)
      for (const int arc : end.arcs) entry[L"ends"].append(edgeEntry(round_[static_cast<size_t>(arc)].path));
    entry[L"evidence"] = ZnString().format(L"two sides of %.6g joined by half circles of radius %.6g",
                                           slot.length, slot.radius);
    context.result()[L"slots"].append(entry);
  }
  context.result()[L"strips"] = ZnRxCommandValue::array();
  for (const Strip& strip : strips_) {
    ZnRxCommandValue entry =
        entryOf(context, database, there, sideOf(strip.sides[0]), sideOf(strip.sides[1]));
    entry[L"evidence"] = ZnString().format(L"a bare rectangle of %.6g by %.6g", strip.length, strip.width);
    context.result()[L"strips"].append(entry);
  }
}

} // namespace companion
