#include "quorl/assoc/pers_subent_id_pe.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbAssocPersSubentIdPE, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnDbAssocPersSubentIdPE2, ZnDbAssocPersSubentIdPE)

namespace {

// An entity's own indices last: they follow from the kind of entity.
class EntityPersSubentIdPE : public ZnDbAssocPersSubentIdPE2 {
public:
  ErrorStatus getAllSubentities(const ZnDbEntity* entity, ZnDb::SubentType type,
                                ZnArray<ZnDbSubentId>& ids) const override {
    ids.removeAll();
    if (!entity) return Quorl::eNullObjectPointer;
    entity->getSubentIds(type, ids);
    return ids.isEmpty() ? Quorl::eNothingToDo : Quorl::eOk;
  }

  ErrorStatus getSubentGeometry(const ZnDbEntity* entity, const ZnDbSubentId& id,
                                ZnGeCurve3d*& curve) const override {
    curve = nullptr;
    if (!entity) return Quorl::eNullObjectPointer;
    curve = entity->subentCurve(id).release();
    return curve ? Quorl::eOk : Quorl::eKeyNotFound;
  }

  ErrorStatus getSourceOfSubentity(const ZnDbEntity* entity, const ZnDbSubentId&,
                                   const ZnDbCompoundObjectId& path,
                                   ZnDbCompoundObjectId& source) const override {
    if (!entity || path.isEmpty()) return Quorl::eInvalidInput;
    source = path;
    return Quorl::eOk;
  }
};

bool registerExtensions() {
  static EntityPersSubentIdPE extension;
  ZnDbEntity::rxInit();
  ZnDbAssocPersSubentIdPE2::rxInit();
  ZnDbEntity::desc()->addX(ZnDbAssocPersSubentIdPE::desc(), &extension);
  ZnDbEntity::desc()->addX(ZnDbAssocPersSubentIdPE2::desc(), &extension);
  return true;
}

const bool registered = registerExtensions();

} // namespace
