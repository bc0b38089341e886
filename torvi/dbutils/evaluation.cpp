#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/lifecycle/temp_callback.h"
#include "torvi/style/resources.h"

using Quorl::ErrorStatus;

ErrorStatus ZnTorviLyxUtils::explicitlyEvaluateActionBody(ZnDbObjectId bodyId) {
  {
    ZnDbHolder<ZnDbAssocAction> action;
    const ErrorStatus status = action.openForWrite(ZnDbAssocActionBody::parentAction(bodyId));
    if (status != Quorl::eOk) return status;
    action->setStatus(kChangedDirectlyAssocStatus, true, false);
  }
  ZnDbAssocManager::evaluateTopLevelNetwork(bodyId.database(), nullptr, 0);
  return Quorl::eOk;
}

ErrorStatus ZnTorviLyxUtils::evaluateAction(ZnDbObjectId actionId) {
  ZnDbHolder<ZnDbAssocAction> action;
  if (const ErrorStatus status = action.openForWrite(actionId); status != Quorl::eOk) return status;
  action->setStatus(kChangedDirectlyAssocStatus, true, false);
  CTempCallBack callback;
  action->evaluate(&callback);
  return Quorl::eOk;
}

void ZnTorviLyxUtils::printCenterDisassociatedMessage(ZnDbObjectId bodyId) {
  struct Row {
    ZnDbTorviType kind;
    unsigned message;
  };
  static constexpr Row kMessages[] = {
      {kCenterMark, 2033}, {kCenterLine, 2034}, {kEdgeExtension, 2038}, {kCenterMarkPattern, 2039}};
  const ZnDbTorviType kind = ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(bodyId);
  for (const Row& row : kMessages)
    if (row.kind == kind) znutPrintf(L"%s\n", ZnTorviResources::text(row.message).c_str());
}
