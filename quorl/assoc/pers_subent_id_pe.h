// Edges and vertices of an entity by ids that last through changes of the entity.
#pragma once

#include "quorl/db/entity/entity.h"

class ZnDbAssocPersSubentIdPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocPersSubentIdPE)

public:
  // Replaces ids; eNothingToDo when the entity has none of the type.
  virtual Quorl::ErrorStatus getAllSubentities(const ZnDbEntity* entity, ZnDb::SubentType type,
                                               ZnArray<ZnDbSubentId>& ids) const = 0;
  // A new curve in the entity's coordinates, owned by the caller; null and eKeyNotFound for an id that the
  // entity has not.
  virtual Quorl::ErrorStatus getSubentGeometry(const ZnDbEntity* entity, const ZnDbSubentId& id,
                                               ZnGeCurve3d*& curve) const = 0;
};

class ZnDbAssocPersSubentIdPE2 : public ZnDbAssocPersSubentIdPE {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocPersSubentIdPE2)

public:
  // The object, as it was picked, of which the entity at the end of the path shows that part; the path itself
  // for an entity that shows its own.
  virtual Quorl::ErrorStatus getSourceOfSubentity(const ZnDbEntity* entity, const ZnDbSubentId& id,
                                                  const ZnDbCompoundObjectId& path,
                                                  ZnDbCompoundObjectId& source) const = 0;
};
