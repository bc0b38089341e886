#include "quorl/db/entity/subent.h"

#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/viewport.h"

using Quorl::ErrorStatus;

ZnDbFullSubentPath::ZnDbFullSubentPath(ZnDbObjectId entity, ZnDb::SubentType type, std::int64_t index)
    : ids_{entity}
    , subent_(type, index) {}

ZnDbFullSubentPath::ZnDbFullSubentPath(ZnDbObjectId entity, const ZnDbSubentId& subent)
    : ids_{entity}
    , subent_(subent) {}

ZnDbFullSubentPath::ZnDbFullSubentPath(const ZnArray<ZnDbObjectId>& path, const ZnDbSubentId& subent)
    : ids_(path)
    , subent_(subent) {}

ZnDbCompoundObjectId::ZnDbCompoundObjectId(ZnDbObjectId id, ZnDbDatabase*)
    : leaf_(id) {}

ZnDbCompoundObjectId::ZnDbCompoundObjectId(const ZnDbFullSubentPath& path, ZnDbDatabase* hostDatabase) {
  setFullPath(path, hostDatabase);
}

ErrorStatus ZnDbCompoundObjectId::getPath(ZnArray<ZnDbObjectId>& ids) const {
  ids.removeAll();
  if (isEmpty()) return Quorl::eInvalidInput;
  for (const ZnDbObjectId id : path_) ids.append(id);
  return Quorl::eOk;
}

ErrorStatus ZnDbCompoundObjectId::getFullPath(ZnArray<ZnDbObjectId>& ids) const {
  const ErrorStatus status = getPath(ids);
  if (status == Quorl::eOk) ids.append(leaf_);
  return status;
}

// An empty path, or one with a null id, leads nowhere and empties this one.
ErrorStatus ZnDbCompoundObjectId::setFullPath(const ZnArray<ZnDbObjectId>& ids, ZnDbDatabase*) {
  const ZnArray<ZnDbObjectId> full = ids;
  setEmpty();
  if (full.isEmpty()) return Quorl::eInvalidInput;
  for (const ZnDbObjectId id : full)
    if (id.isNull()) return Quorl::eNullObjectId;
  path_.assign(full.begin(), full.end() - 1);
  leaf_ = full.last();
  return Quorl::eOk;
}

ErrorStatus ZnDbCompoundObjectId::setFullPath(const ZnDbFullSubentPath& path, ZnDbDatabase* hostDatabase) {
  return setFullPath(path.objectIds(), hostDatabase);
}

ErrorStatus ZnDbCompoundObjectId::set(ZnDbObjectId leaf, const ZnArray<ZnDbObjectId>& path) {
  ZnArray<ZnDbObjectId> full = path;
  full.append(leaf);
  return setFullPath(full);
}

ErrorStatus ZnDbCompoundObjectId::getTransform(ZnGeMatrix3d& transform) const {
  transform.setToIdentity();
  for (size_t i = 0; i < path_.size(); ++i) {
    if (i == 0 && path_[i].isDerivedFrom(ZnDbViewport::desc())) continue;
    const ZnDbHolder<ZnDbBlockReference> reference(path_[i]);
    if (!reference.isOpen()) return reference.status();
    transform *= reference->blockTransform();
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbCompoundObjectId::remap(const ZnDbIdMapping& mapping) {
  const auto translated = [&](ZnDbObjectId id) {
    ZnDbIdPair pair(id);
    return mapping.compute(pair) && pair.isCloned() && !pair.value().isNull() ? pair.value() : id;
  };
  for (ZnDbObjectId& id : path_) id = translated(id);
  leaf_ = translated(leaf_);
  return Quorl::eOk;
}

void ZnDbCompoundObjectId::setEmpty() {
  path_.clear();
  leaf_.setNull();
}
