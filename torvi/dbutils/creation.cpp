#include "torvi/centerline/builder.h"
#include "torvi/centermark/builder.h"
#include "torvi/core/action_body.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/edgeextension/builder.h"
#include "torvi/pattern/builder.h"

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

ErrorStatus ZnTorviLyxUtils::createCenterLine(const ZnArray<ZnDbEdgeRef>& edges,
                                              const ZnGePoint3d* pickPoints, ZnDbObjectId& centerId,
                                              ZnDbDatabase* db) {
  return ZnCenterLineBuilder(edges, pickPoints, databaseOrWorking(db)).createTorvi(centerId);
}

ErrorStatus ZnTorviLyxUtils::reAssociateCenterLine(ZnDbObjectId centerId, const ZnArray<ZnDbEdgeRef>& edges,
                                                   const ZnGePoint3d* pickPoints) {
  return ZnCenterLineBuilder(edges, pickPoints, nullptr).reassociateTorvi(centerId);
}

ErrorStatus ZnTorviLyxUtils::createEdgeExtension(const ZnArray<ZnDbEdgeRef>& edges, ZnDbObjectId& centerId,
                                                 ZnDbDatabase* db) {
  return ZnEdgeExtensionBuilder(edges, databaseOrWorking(db)).createTorvi(centerId);
}

ErrorStatus ZnTorviLyxUtils::reAssociateEdgeExtension(ZnDbObjectId centerId,
                                                      const ZnArray<ZnDbEdgeRef>& edges) {
  return ZnEdgeExtensionBuilder(edges, databaseOrWorking(nullptr)).reassociateTorvi(centerId);
}

ErrorStatus ZnTorviLyxUtils::createCenterMarkPattern(const ZnArray<ZnDbEdgeRef>& edges,
                                                     ZnDbObjectId& centerId,
                                                     CenterMarkPatternType patternType,
                                                     const ZnDbEdgeRef& referenceCircle, bool isFullPCD,
                                                     bool showCenterMark, ZnDbDatabase* db) {
  constexpr double kNoPick = -1.0;
  ZnCenterMarkPatternBuilder builder(databaseOrWorking(db));
  builder.setPatternType(patternType);
  builder.setInputEdges(edges);
  if (builder.autoFillMode()) builder.undoAutoFillPattern();
  builder.setReferenceEdge(referenceCircle, kNoPick);
  // Last: the edges have had their say on both.
  builder.setIsFullPCD(isFullPCD);
  builder.setShowCentermark(showCenterMark);
  return builder.createTorvi(centerId);
}
