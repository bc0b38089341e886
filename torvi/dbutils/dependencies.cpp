#include "torvi/core/action_body.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace {

ErrorStatus addDependencyTo(ZnDbAssocActionBody* body, ZnDbObjectId object, bool isWrite,
                            ZnDbObjectId& dependencyId) {
  constexpr int kOrder = 0;
  ErrorStatus status = body->addDependency(nullptr, nullptr, true, isWrite, kOrder, dependencyId);
  if (status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbAssocDependency> dependency;
  status = dependency.openForWrite(dependencyId);
  if (status != Quorl::eOk) return status;
  if (!dependency->dependentOnObject().isNull()) dependency->detachFromObject();
  return dependency->attachToObject(ZnDbCompoundObjectId(object, nullptr));
}

} // namespace

ErrorStatus ZnTorviLyxUtils::addReadWriteDependencyToObject(ZnDbAssocActionBody* body, ZnDbObjectId object,
                                                            ZnDbObjectId& dependencyId) {
  return addDependencyTo(body, object, true, dependencyId);
}

ErrorStatus ZnTorviLyxUtils::addReadOnlyDependencyToObject(ZnDbAssocActionBody* body, ZnDbObjectId object,
                                                           ZnDbObjectId& dependencyId) {
  return addDependencyTo(body, object, false, dependencyId);
}

ErrorStatus ZnTorviLyxUtils::setCenterDependencyId(ZnDbObjectId bodyId, ZnDbObjectId centerId) {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  ZnDbObjectId dependencyId;
  if (addReadWriteDependencyToObject(body.object(), centerId, dependencyId) != Quorl::eOk)
    return Quorl::eInvalidInput;
  return body->setCenterDepId(dependencyId);
}

void ZnTorviLyxUtils::deleteCenterDependenciesOnObject(ZnDbObjectId refId) {
  ZnArray<ZnDbObjectId> bodies;
  getAllTorviActionBodiesDependOnBlkRef(refId, bodies);
  for (const ZnDbObjectId id : bodies) {
    ZnDbHolder<ZnDbAssocActionBody> body(id);
    if (!body.isOpen()) continue;
    ZnArray<ZnDbObjectId> dependencies;
    body->getDependencies(true, true, dependencies);
    body->removeAllDependencies(true);
  }
}
