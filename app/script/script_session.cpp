#include "app/script/script_session.h"

#include <utility>

#include "quorl/db/block_table.h"
#include "quorl/db/entity.h"

namespace app {

ZnDbObjectId ScriptSession::named(const std::string& name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? ZnDbObjectId() : found->second;
}

Quorl::ErrorStatus ScriptSession::append(ZnDbEntity* entity) {
  ZnDbHolder<ZnDbEntity> owner(entity);
  entity->setDatabaseDefaults(&database_);
  ZnDbHolder<ZnDbBlockTableRecord> space;
  ZnDbObjectId id;
  Quorl::ErrorStatus status = space.openForWrite(database_.currentSpaceId());
  if (status == Quorl::eOk) status = space->appendZnDbEntity(id, entity);
  if (status == Quorl::eOk) noteMade(id);
  return status;
}

std::vector<ZnDbObjectId> ScriptSession::takeMade() { return std::exchange(made_, {}); }

} // namespace app
