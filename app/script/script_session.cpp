#include "app/script/script_session.h"

#include <cmath>
#include <memory>
#include <utility>

#include "app/tolerance.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"

namespace app {

ZnDbObjectId ScriptSession::named(const std::string& name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? ZnDbObjectId() : found->second;
}

void ScriptSession::rename(ZnDbObjectId from, ZnDbObjectId to) {
  for (auto& [name, id] : names_)
    if (id == from) id = to;
}

bool ScriptSession::isBlockEdited() const {
  const ZnDbObjectId current = database_.currentSpaceId();
  if (database_.headerIds().standsUnderItsName(current)) return false;
  const ZnDbHolder<ZnDbBlockTableRecord> space(current);
  return space.isOpen() && !space->isLayout();
}

Quorl::ErrorStatus ScriptSession::append(ZnDbEntity* entity) {
  ZnDbHolder<ZnDbEntity> owner(entity);
  if (!isInRange(*entity)) return Quorl::eOutOfRange;
  entity->setDatabaseDefaults(&database_);
  ZnDbHolder<ZnDbBlockTableRecord> space;
  ZnDbObjectId id;
  Quorl::ErrorStatus status = space.openForWrite(database_.currentSpaceId());
  if (status == Quorl::eOk) status = space->appendZnDbEntity(id, entity);
  if (status == Quorl::eOk) noteMade(id);
  return status;
}

Quorl::ErrorStatus ScriptSession::appendReference(ZnDbObjectId block, const ZnGeMatrix3d& place) {
  auto reference = std::make_unique<ZnDbBlockReference>(ZnGePoint3d(), block);
  const Quorl::ErrorStatus status = reference->setBlockTransform(place);
  return status == Quorl::eOk ? append(reference.release()) : status;
}

bool ScriptSession::isInRange(const ZnDbEntity& entity) {
  ZnGeBoundBlock3d box;
  // What has no extents, such as a text without letters, is nowhere.
  if (entity.getGeomExtents(box) != Quorl::eOk) return true;
  for (const ZnGePoint3d& corner : {box.min(), box.max()})
    for (const double coordinate : {corner.x, corner.y, corner.z})
      if (!(std::abs(coordinate) <= kLargestNumber)) return false;
  const double size = box.diagonal().length();
  // A point has no size to be too small.
  return size == 0.0 || size >= kLeastSize;
}

std::vector<ZnDbObjectId> ScriptSession::takeMade() { return std::exchange(made_, {}); }

} // namespace app
