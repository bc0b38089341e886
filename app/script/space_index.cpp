#include "app/script/space_index.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>

#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"

namespace app {

namespace {

namespace bg = boost::geometry;
using Point = bg::model::point<double, 3, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Item = std::pair<Box, ZnDbObjectId>;

Point pointOf(const ZnGePoint3d& point) { return {point.x, point.y, point.z}; }

ZnGeBoundBlock3d blockOf(const Box& box) {
  const Point &low = box.min_corner(), &high = box.max_corner();
  return {ZnGePoint3d(low.get<0>(), low.get<1>(), low.get<2>()),
          ZnGePoint3d(high.get<0>(), high.get<1>(), high.get<2>())};
}

// False for what has no box, or one that no order of distances could hold.
bool boxOf(ZnDbObjectId id, Box& box) {
  ZnDbHolder<ZnDbEntity> entity(id);
  ZnGeBoundBlock3d extents;
  if (!entity.isOpen() || entity->getGeomExtents(extents) != Quorl::eOk || extents.isEmpty()) return false;
  if (!std::isfinite(extents.diagonal().length())) return false;
  box = {pointOf(extents.min()), pointOf(extents.max())};
  return true;
}

struct Near {
  double distance = 0.0;
  ZnDbObjectId id;
  friend bool operator<(const Near& a, const Near& b) {
    return a.distance != b.distance ? a.distance < b.distance : a.id < b.id;
  }
};

} // namespace

struct SpaceIndex::Tree {
  static constexpr size_t kMostInNode = 16;
  bg::index::rtree<Item, bg::index::quadratic<kMostInNode>> items;
  std::unordered_map<ZnDbObjectId, Box> boxes; // of what stands in the tree
  std::unordered_set<ZnDbObjectId> unboxed;
};

SpaceIndex::SpaceIndex(ZnDbDatabase& database)
    : database_(database) {
  database_.addReactor(this);
}

SpaceIndex::~SpaceIndex() { database_.removeReactor(this); }

void SpaceIndex::note(const ZnDbObject* object) {
  if (tree_ && (object->isKindOf(ZnDbEntity::desc()) || object->isKindOf(ZnDbBlockTableRecord::desc())))
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
  if (!tree_ || space_ != database_.currentSpaceId()) return build();
  if (changed_.empty()) return;
  const std::vector<ZnDbObjectId> ids = touched();
  changed_.clear();
  // Packing a new tree costs less than moving most of the old one.
  if (ids.size() > tree_->boxes.size() / 2) return build();
  for (const ZnDbObjectId id : ids) {
    remove(id);
    place(id);
  }
}

void SpaceIndex::build() {
  tree_ = std::make_unique<Tree>();
  changed_.clear();
  space_ = database_.currentSpaceId();
  ZnDbHolder<ZnDbBlockTableRecord> space(space_);
  if (!space.isOpen()) return;
  std::vector<Item> items;
  for (const ZnDbObjectId id : space->entityIds()) {
    if (id.isErased()) continue;
    Box box;
    if (boxOf(id, box))
      items.emplace_back(box, id);
    else
      tree_->unboxed.insert(id);
  }
  for (const auto& [box, id] : items) tree_->boxes.emplace(id, box);
  tree_->items = decltype(tree_->items)(items);
}

void SpaceIndex::remove(ZnDbObjectId id) {
  tree_->unboxed.erase(id);
  const auto found = tree_->boxes.find(id);
  if (found == tree_->boxes.end()) return;
  tree_->items.remove(Item(found->second, id));
  tree_->boxes.erase(found);
}

void SpaceIndex::place(ZnDbObjectId id) {
  ZnDbHolder<ZnDbEntity> entity(id);
  if (!entity.isOpen() || entity->ownerId() != space_) return;
  Box box;
  if (!boxOf(id, box)) {
    tree_->unboxed.insert(id);
    return;
  }
  tree_->boxes.emplace(id, box);
  tree_->items.insert(Item(box, id));
}

double SpaceIndex::diagonal() {
  bringUpToDate();
  return tree_->items.empty() ? 0.0 : blockOf(tree_->items.bounds()).diagonal().length();
}

void SpaceIndex::visitNearest(const ZnGePoint3d& point, const Visitor& visitor) {
  bringUpToDate();
  for (const ZnDbObjectId id : tree_->unboxed)
    if (!visitor(id, 0.0)) return;
  if (tree_->items.empty()) return;
  // A query for the nearest of all, one after the other, would look at the whole tree: it prunes by their
  // number only. So a few are asked for, and more while the visitor goes on.
  constexpr size_t kFirst = 8, kGrowth = 4;
  const size_t all = tree_->items.size();
  size_t seen = 0;
  for (size_t count = kFirst; seen < all; count *= kGrowth) {
    std::vector<Near> found;
    for (auto item = tree_->items.qbegin(bg::index::nearest(pointOf(point), static_cast<unsigned>(count)));
         item != tree_->items.qend(); ++item)
      found.push_back({blockOf(item->first).distanceTo(point), item->second});
    std::sort(found.begin(), found.end());
    for (; seen < found.size(); ++seen)
      if (!visitor(found[seen].id, found[seen].distance)) return;
  }
}

} // namespace app
