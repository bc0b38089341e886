#include "torvi/centerline/builder.h"

#include <memory>

#include "torvi/centerline/action_body.h"
#include "torvi/centerline/layout.h"
#include "torvi/core/edge_relations.h"
#include "torvi/drawing/edge_curves.h"

using Quorl::ErrorStatus;

ZnRxClass* ZnCenterLineBuilder::gpDesc = nullptr;

namespace {

constexpr int kEdges = 2;
constexpr int kStartEnding = 0;
constexpr int kEndEnding = 1;

// An edge that lies on one side of the crossing points away from it; on one that is crossed the pick chooses
// the half. The parameter of a pick off the edge is that of its nearest end.
int edgeRefDirEndingFromPick(const ZnGeLineSeg3d& edge, double atCrossing, const ZnGePoint3d& pick) {
  const ZnGeInterval range = edge.interval();
  if (range.lowerBound() >= atCrossing) return kEndEnding;
  if (atCrossing >= range.upperBound()) return kStartEnding;
  return edge.paramOf(pick, ZnGeContext::gTol) > atCrossing ? kEndEnding : kStartEnding;
}

// Colinear edges are parallel too. eInvalidInput for skew ones.
ErrorStatus edgeRefDirEndings(const ZnGeLineSeg3d (&edges)[kEdges], const ZnArray<ZnGePoint3d>& picks,
                              int (&endings)[kEdges]) {
  if (torvi::areParallel(edges[0], edges[1])) {
    const bool sameSense = edges[0].direction().dotProduct(edges[1].direction()) > 0.0;
    endings[0] = sameSense ? kEndEnding : kStartEnding;
    endings[1] = kEndEnding;
    return Quorl::eOk;
  }
  const std::optional<torvi::EdgeMeeting> meeting = torvi::EdgeMeeting::of(edges[0], edges[1]);
  if (!meeting) return Quorl::eInvalidInput;
  for (int i = 0; i < kEdges; ++i)
    endings[i] = edgeRefDirEndingFromPick(edges[i], meeting->settledParam(i), picks[i]);
  return Quorl::eOk;
}

} // namespace

ZnCenterLineBuilder::ZnCenterLineBuilder(const ZnArray<ZnDbEdgeRef>& edges, const ZnGePoint3d* pickPoints,
                                         ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbCenterLineActionBody", gpDesc), database) {
  setInputEdges(edges);
  if (pickPoints) setPickPoints({pickPoints[0], pickPoints[1]});
}

ZnCenterLineBuilder::ZnCenterLineBuilder(ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbCenterLineActionBody", gpDesc), database) {}

ZnDbTorviLayout* ZnCenterLineBuilder::getLayout() const { return new ZnDbCenterLineLayout(ZnDbObjectId()); }

ErrorStatus ZnCenterLineBuilder::initValuesInBody(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbCenterLineActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  body->resetExtensions();
  body->resetOvershoots();
  return initEdgeRefDir(bodyId);
}

ErrorStatus ZnCenterLineBuilder::subReassociateActionBodyToInputEdge(ZnDbObjectId bodyId) const {
  return initEdgeRefDir(bodyId);
}

ErrorStatus ZnCenterLineBuilder::initEdgeRefDir(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbCenterLineActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  if (pickPoints().length() < kEdges) return Quorl::eInvalidInput;
  ZnGeLineSeg3d edges[kEdges];
  for (int i = 0; i < kEdges; ++i) {
    const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(body->getInputEdge(i), false));
    if (!curve || !curve->isKindOf(ZnGe::kLineSeg3d)) return Quorl::eInvalidInput;
    edges[i] = static_cast<const ZnGeLineSeg3d&>(*curve);
  }
  int endings[kEdges];
  const ErrorStatus status = edgeRefDirEndings(edges, pickPoints(), endings);
  if (status != Quorl::eOk) return status;
  for (int i = 0; i < kEdges; ++i) body->setEdgeRefDirEnding(i, endings[i]);
  return Quorl::eOk;
}
