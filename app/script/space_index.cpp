#include "app/script/space_index.h"

#include <algorithm>
#include <cmath>

#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"

namespace app {

namespace {

ZnGePlaceIndex3d::Box boxOf(const ZnGeBoundBlock3d& block) { return {block.min(), block.max()}; }

// False for what has no box, or one that no order of distances could hold.
bool extentsOf(ZnDbObjectId id, ZnGeBoundBlock3d& extents) {
  ZnDbHolder<ZnDbEntity> entity(id);
  return entity.isOpen() && entity->getGeomExtents(extents) == Quorl::eOk && !extents.isEmpty() &&
         std::isfinite(extents.diagonal().length());
}

struct Near {
  double distance = 0.0;
  ZnDbObjectId id;
  friend bool operator<(const Near& a, const Near& b) {
    return a.distance != b.distance ? a.distance < b.distance : a.id < b.id;
  }
};

} // namespace

SpaceIndex::SpaceIndex(ZnDbDatabase& database)
    : database_(database) {
  database_.addReactor(this);
}

SpaceIndex::~SpaceIndex() { database_.removeReactor(this); }

void SpaceIndex::note(const ZnDbObject* object) {
  if (isBuilt_ && (object->isKindOf(ZnDbEntity::desc()) || object->isKindOf(ZnDbBlockTableRecord::desc())))
    changed_.push_back(object->objectId());
}

// What changed in the space itself, and what shows a block in which something changed.
std::vector<ZnDbObjectId> SpaceIndex::touched() const {
  std::vector<ZnDbObjectId> ids;
  std::unordered_set<ZnDbObjectId> blocks;
  for (const ZnDbObjectId id : changed_) {
    ZnDbHolder<ZnDbObject> object(id, true);
    if (!object.isOpen()) continue;
    const bool isBlock = object->isKindOf(ZnDbBlockTableRecord::desc());
    if (!isBlock) ids.push_back(id);
    blocks.insert(isBlock ? id : object->ownerId());
  }
  blocks.erase(space_);
  for (const ZnDbObjectId id : blocks) {
    ZnDbHolder<ZnDbBlockTableRecord> block(id);
    ZnArray<ZnDbObjectId> references;
    if (block.isOpen()) block->getBlockReferenceIds(references, false);
    for (const ZnDbObjectId reference : references) ids.push_back(reference);
  }
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids;
}

void SpaceIndex::bringUpToDate() {
  if (!isBuilt_ || space_ != database_.currentSpaceId()) return build();
  if (changed_.empty()) return;
  const std::vector<ZnDbObjectId> ids = touched();
  changed_.clear();
  // Packing a new index costs less than moving most of the old one; and what has moved often leaves numbers.
  if (ids.size() > index_.size() / 2 || placed_.size() > 2 * index_.size() + ids.size()) return build();
  for (const ZnDbObjectId id : ids) {
    remove(id);
    place(id);
  }
}

void SpaceIndex::build() {
  isBuilt_ = true;
  placed_.clear();
  numbers_.clear();
  unboxed_.clear();
  index_ = ZnGePlaceIndex3d();
  changed_.clear();
  space_ = database_.currentSpaceId();
  ZnDbHolder<ZnDbBlockTableRecord> space(space_);
  if (!space.isOpen()) return;
  std::vector<ZnGePlaceIndex3d::Box> boxes;
  for (const ZnDbObjectId id : space->entityIds()) {
    if (id.isErased()) continue;
    ZnGeBoundBlock3d extents;
    if (!extentsOf(id, extents)) {
      unboxed_.insert(id);
      continue;
    }
    boxes.push_back(boxOf(extents));
    numbers_.emplace(id, static_cast<int>(placed_.size()));
    placed_.push_back({id, extents});
  }
  index_ = ZnGePlaceIndex3d(boxes);
}

void SpaceIndex::remove(ZnDbObjectId id) {
  unboxed_.erase(id);
  const auto found = numbers_.find(id);
  if (found == numbers_.end()) return;
  index_.remove(boxOf(placed_[static_cast<size_t>(found->second)].extents), found->second);
  numbers_.erase(found);
}

void SpaceIndex::place(ZnDbObjectId id) {
  ZnDbHolder<ZnDbEntity> entity(id);
  if (!entity.isOpen() || entity->ownerId() != space_) return;
  ZnGeBoundBlock3d extents;
  if (!extentsOf(id, extents)) {
    unboxed_.insert(id);
    return;
  }
  const int number = static_cast<int>(placed_.size());
  placed_.push_back({id, extents});
  numbers_.emplace(id, number);
  index_.insert(boxOf(extents), number);
}

double SpaceIndex::diagonal() {
  bringUpToDate();
  const ZnGePlaceIndex3d::Box bounds = index_.bounds();
  return bounds.lower.distanceTo(bounds.upper);
}

void SpaceIndex::visitNearest(const ZnGePoint3d& point, const Visitor& visitor) {
  bringUpToDate();
  for (const ZnDbObjectId id : unboxed_)
    if (!visitor(id, 0.0)) return;
  // A query for the nearest of all, one after the other, would look at the whole index: it prunes by their
  // number only. So a few are asked for, and more while the visitor goes on.
  constexpr size_t kFirst = 8, kGrowth = 4;
  const size_t all = index_.size();
  size_t seen = 0;
  for (size_t count = kFirst; seen < all; count *= kGrowth) {
    std::vector<Near> found;
    for (const int number : index_.nearest(point, static_cast<int>(std::min(count, all)))) {
      const Placed& placed = placed_[static_cast<size_t>(number)];
      found.push_back({placed.extents.distanceTo(point), placed.id});
    }
    std::sort(found.begin(), found.end());
    for (; seen < found.size(); ++seen)
      if (!visitor(found[seen].id, found[seen].distance)) return;
  }
}

} // namespace app
