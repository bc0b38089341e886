#include "torvi/edgeextension/object_wrapper.h"

#include "torvi/edgeextension/action_body.h"

using Quorl::ErrorStatus;

ZnDbEdgeExtensionObjectWrapper::ZnDbEdgeExtensionObjectWrapper(ZnDbObjectId id)
    : ZnDbTorviObjectWrapper(id) {}

ErrorStatus ZnDbEdgeExtensionObjectWrapper::getCachedRefEdgePoints(int index,
                                                                   ZnArray<ZnGePoint3d>& points) const {
  ZnDbHolder<ZnDbEdgeExtensionActionBody> body(actionBody());
  return body.isOpen() ? body->getCachedRefEdgePoints(index, points) : body.status();
}

ErrorStatus ZnDbEdgeExtensionObjectWrapper::setCachedRefEdgePoints(int index,
                                                                   const ZnArray<ZnGePoint3d>& points) {
  ZnDbHolder<ZnDbEdgeExtensionActionBody> body;
  const ErrorStatus status = body.openForWrite(actionBody());
  return status == Quorl::eOk ? body->setCachedRefEdgePoints(index, points) : status;
}
