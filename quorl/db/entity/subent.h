// Addresses of parts of entities: a sub-entity id, and paths down through block references.
#pragma once

#include <cstdint>
#include <vector>

#include "quorl/base/array.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/db/core/object_id.h"
#include "quorl/ge/matrix3d.h"

class ZnDbIdMapping;

// An edge or vertex of an entity by its lasting index, counted from 0.
class ZnDbSubentId {
public:
  ZnDbSubentId() = default;
  ZnDbSubentId(ZnDb::SubentType type, std::int64_t index)
      : type_(type)
      , index_(index) {}
  ZnDb::SubentType type() const { return type_; }
  std::int64_t index() const { return index_; }
  friend bool operator==(const ZnDbSubentId&, const ZnDbSubentId&) = default;

private:
  ZnDb::SubentType type_ = ZnDb::kNullSubentType;
  std::int64_t index_ = 0;
};

// A path of ids, outermost block reference or viewport first, entity last, with a part of the entity.
class ZnDbFullSubentPath {
public:
  ZnDbFullSubentPath() = default;
  ZnDbFullSubentPath(ZnDbObjectId entity, ZnDb::SubentType type, std::int64_t index);
  ZnDbFullSubentPath(ZnDbObjectId entity, const ZnDbSubentId& subent);
  ZnDbFullSubentPath(const ZnArray<ZnDbObjectId>& path, const ZnDbSubentId& subent);

  const ZnArray<ZnDbObjectId>& objectIds() const { return ids_; }
  ZnArray<ZnDbObjectId>& objectIds() { return ids_; }
  const ZnDbSubentId& subentId() const { return subent_; }
  void setSubentId(const ZnDbSubentId& subent) { subent_ = subent; }
  friend bool operator==(const ZnDbFullSubentPath&, const ZnDbFullSubentPath&) = default;

private:
  ZnArray<ZnDbObjectId> ids_;
  ZnDbSubentId subent_;
};

// A path of ids down to an entity, with the transform that takes the entity's coordinates to those of the
// space in which the first id stands. A viewport as first id contributes no transform.
class ZnDbCompoundObjectId {
public:
  ZnDbCompoundObjectId() = default;
  explicit ZnDbCompoundObjectId(ZnDbObjectId id, ZnDbDatabase* hostDatabase = nullptr);
  explicit ZnDbCompoundObjectId(const ZnDbFullSubentPath& path, ZnDbDatabase* hostDatabase = nullptr);

  bool isEmpty() const { return leaf_.isNull(); }
  ZnDbObjectId topId() const { return path_.empty() ? leaf_ : path_.front(); } // the first id
  ZnDbObjectId leafId() const { return leaf_; }                                // the last id
  // The ids above the leaf; status 3 when empty.
  Quorl::ErrorStatus getPath(ZnArray<ZnDbObjectId>& ids) const;
  // All ids, leaf included.
  Quorl::ErrorStatus getFullPath(ZnArray<ZnDbObjectId>& ids) const;
  Quorl::ErrorStatus setFullPath(const ZnArray<ZnDbObjectId>& ids, ZnDbDatabase* hostDatabase = nullptr);
  Quorl::ErrorStatus setFullPath(const ZnDbFullSubentPath& path, ZnDbDatabase* hostDatabase = nullptr);
  Quorl::ErrorStatus set(ZnDbObjectId leaf, const ZnArray<ZnDbObjectId>& path);
  // The product of the block transforms on the path; a reference that can't be read gives its status.
  Quorl::ErrorStatus getTransform(ZnGeMatrix3d& transform) const;
  // Replaces ids that were cloned by their clones.
  Quorl::ErrorStatus remap(const ZnDbIdMapping& mapping);
  void setEmpty();

  // For walks that must not copy: the ids above the leaf.
  const std::vector<ZnDbObjectId>& pathIds() const { return path_; }
  friend bool operator==(const ZnDbCompoundObjectId&, const ZnDbCompoundObjectId&) = default;

private:
  std::vector<ZnDbObjectId> path_;
  ZnDbObjectId leaf_;
};
