#include "torvi/core/evaluation.h"

#include "torvi/core/kind.h"
#include "torvi/core/temp_callback.h"
#include "torvi/drawing/ask.h"
#include "torvi/style/resources.h"

using Quorl::ErrorStatus;

namespace torvi {

ErrorStatus evaluateNetworkFor(ZnDbObjectId bodyId) {
  const auto mark = [](ZnDbAssocAction& action) {
    action.setStatus(kChangedDirectlyAssocStatus, true, false);
    return Quorl::eOk;
  };
  const ErrorStatus status = change<ZnDbAssocAction>(ZnDbAssocActionBody::parentAction(bodyId), mark);
  if (status == Quorl::eOk) ZnDbAssocManager::evaluateTopLevelNetwork(bodyId.database(), nullptr, 0);
  return status;
}

ErrorStatus evaluateAlone(ZnDbObjectId actionId) {
  return change<ZnDbAssocAction>(actionId, [](ZnDbAssocAction& action) {
    action.setStatus(kChangedDirectlyAssocStatus, true, false);
    CTempCallBack callback;
    action.evaluate(&callback);
    return Quorl::eOk;
  });
}

void printDisassociated(ZnDbObjectId bodyId) {
  if (const Kind* kind = kindOfBody(bodyId))
    znutPrintf(L"%s\n", ZnTorviResources::text(kind->disassociatedMessage).c_str());
}

} // namespace torvi
