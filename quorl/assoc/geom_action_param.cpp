#include "quorl/assoc/geom_action_param.h"

#include "quorl/db/core/fields.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbAssocGeomActionParam, ZnDbAssocActionParam)

ZnDbAssocGeomDependency* ZnDbAssocGeomActionParam::geomDependency() const {
  if (dependencyId_.isErased() || !dependencyId_.isDerivedFrom(ZnDbAssocGeomDependency::desc()))
    return nullptr;
  return static_cast<ZnDbAssocGeomDependency*>(dependencyId_.slot()->object);
}

ErrorStatus ZnDbAssocGeomActionParam::getDependentOnCompoundObject(ZnDbCompoundObjectId& path) const {
  const ZnDbAssocGeomDependency* dependency = geomDependency();
  if (!dependency || !dependency->isAttached()) {
    path.setEmpty();
    return Quorl::eNothingToDo;
  }
  path = dependency->compoundObject();
  return Quorl::eOk;
}

bool ZnDbAssocGeomActionParam::dependentTopId(ZnDbObjectId& id) const {
  const ZnDbAssocGeomDependency* dependency = geomDependency();
  if (!dependency || !dependency->isAttached()) return false;
  id = dependency->dependentOnObject();
  return true;
}

ErrorStatus ZnDbAssocGeomActionParam::dependOn(const ZnDbCompoundObjectId& path, const ZnDbSubentId& subent,
                                               bool isRead, bool isWrite, int order) {
  ZnDbAssocAction* action = parentAction();
  if (!action) return Quorl::eNotInDatabase;
  assertWriteEnabled();
  ZnDbHolder<ZnDbAssocGeomDependency> dependency;
  if (geomDependency()) {
    if (const ErrorStatus status = dependency.openForWrite(dependencyId_); status != Quorl::eOk)
      return status;
  } else {
    dependency.acquire(new ZnDbAssocGeomDependency);
    const ErrorStatus status = action->addDependency(dependency.object(), dependencyId_);
    if (status != Quorl::eOk) return status;
  }
  dependency->setIsReadDependency(isRead);
  dependency->setIsWriteDependency(isWrite);
  dependency->setOrder(order);
  dependency->setSubentId(subent);
  if (dependency->isAttached()) {
    if (dependency->compoundObject() == path) return Quorl::eOk;
    dependency->detachFromObject();
  }
  return dependency->attachToObject(path);
}

ErrorStatus ZnDbAssocGeomActionParam::release(bool erasing) {
  if (!geomDependency()) return Quorl::eOk;
  assertWriteEnabled();
  if (!erasing) {
    ZnDbHolder<ZnDbAssocGeomDependency> dependency;
    if (const ErrorStatus status = dependency.openForWrite(dependencyId_); status != Quorl::eOk)
      return status;
    dependency->detachFromObject();
    return Quorl::eOk;
  }
  ZnDbAssocAction* action = parentAction();
  const ErrorStatus status = action ? action->removeDependency(dependencyId_, true) : Quorl::eNotInDatabase;
  dependencyId_.setNull();
  return status;
}

// The dependency stays in the action's list, erased, so that a parameter that is brought back finds it.
ErrorStatus ZnDbAssocGeomActionParam::subErase(bool erasing) {
  if (!dependencyId_.isValid() || dependencyId_.isErased() == erasing) return Quorl::eOk;
  ZnDbHolder<ZnDbAssocGeomDependency> dependency;
  if (dependency.openForWrite(dependencyId_, true) == Quorl::eOk) dependency->erase(erasing);
  return Quorl::eOk;
}

template<class Walk> void ZnDbAssocGeomActionParam::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"dependency", dependencyId_);
}

ZNDB_DEFINE_FIELDS(ZnDbAssocGeomActionParam, ZnDbAssocActionParam)

void ZnDbAssocGeomActionParam::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbAssocActionParam::audit(faults, fix);
  const ZnDbAssocGeomDependency* dependency = geomDependency();
  if (dependencyId_.isErased() || (dependency && dependency->ownerId() == ownerId())) return;
  faults.push_back(L"parameter " + handleText(handle()) + L": its dependency is none of the action");
  if (!fix) return;
  assertWriteEnabled();
  dependencyId_.setNull();
}
