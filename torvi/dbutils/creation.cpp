#include "torvi/centermark/builder.h"
#include "torvi/core/action_body.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace {

ZnDbDatabase* databaseOrWorking(ZnDbDatabase* db) {
  return db ? db : zndbHostApplicationServices()->workingDatabase();
}

} // namespace

ErrorStatus ZnTorviLyxUtils::createCenterMark(const ZnDbEdgeRef& edge, ZnDbObjectId& centerId,
                                              ZnDbDatabase* db) {
  const ZnCenterMarkBuilder builder(ZnArray<ZnDbEdgeRef>{edge}, databaseOrWorking(db));
  return builder.createTorvi(centerId);
}

ErrorStatus ZnTorviLyxUtils::reAssociateCenterMark(ZnDbObjectId centerId, const ZnDbEdgeRef& edge) {
  const ZnCenterMarkBuilder builder(ZnArray<ZnDbEdgeRef>{edge}, databaseOrWorking(nullptr));
  return builder.reassociateTorvi(centerId);
}
