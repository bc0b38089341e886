#include "quorl/view/point_ref.h"

#include "quorl/db/entity/viewport.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbPointRef::mswcsToPswcs(const ZnDbViewport* viewport, ZnGeMatrix3d& transform) {
  if (!viewport) return Quorl::eNullObjectPointer;
  transform = viewport->modelToPaperTransform();
  return Quorl::eOk;
}

ErrorStatus ZnDbPointRef::evaluatePoint(ZnGePoint3d& point) const {
  ZnGePoint3d inSpace;
  if (const ErrorStatus status = vertex_.evaluatePoint(inSpace); status != Quorl::eOk) return status;
  const ZnDbObjectId top = vertex_.entity().topId();
  if (top.isDerivedFrom(ZnDbViewport::desc())) {
    const ZnDbHolder<ZnDbViewport> viewport(top);
    ZnGeMatrix3d transform;
    if (const ErrorStatus status = mswcsToPswcs(viewport.object(), transform); status != Quorl::eOk)
      return status;
    inSpace.transformBy(transform);
  }
  point = inSpace;
  return Quorl::eOk;
}
