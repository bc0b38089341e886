#include "torvi/drawing/dependencies.h"

using Quorl::ErrorStatus;

ErrorStatus torvi::addDependencyTo(ZnDbAssocActionBody& body, ZnDbObjectId object, DependencyAccess access,
                                   ZnDbObjectId& dependencyId) {
  constexpr int kOrder = 0;
  const bool isWrite = access == DependencyAccess::kReadWrite;
  ErrorStatus status = body.addDependency(nullptr, nullptr, true, isWrite, kOrder, dependencyId);
  if (status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbAssocDependency> dependency;
  status = dependency.openForWrite(dependencyId);
  if (status != Quorl::eOk) return status;
  if (!dependency->dependentOnObject().isNull()) dependency->detachFromObject();
  return dependency->attachToObject(ZnDbCompoundObjectId(object, nullptr));
}
