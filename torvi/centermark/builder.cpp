#include "torvi/centermark/builder.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/layout.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/drawing/shapes.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

ZnRxClass* ZnCenterMarkBuilder::gpDesc = nullptr;

namespace {

constexpr double kLeastSpanWithLines = torvi::kFullTurn * 2.0 / 3.0;

bool spanHasLines(double span) {
  if (span >= kLeastSpanWithLines) return true;
  const double scaled = std::max(kLeastSpanWithLines, std::fabs(span)) * ZnGeContext::gTol.equalPoint();
  return std::fabs(std::fabs(span) - kLeastSpanWithLines) < std::max(scaled, kLeastScaledTolerance);
}

} // namespace

ZnCenterMarkBuilder::ZnCenterMarkBuilder(const ZnArray<ZnDbEdgeRef>& edges, ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbCenterMarkActionBody", gpDesc), database) {
  setInputEdges(edges);
}

ZnCenterMarkBuilder::ZnCenterMarkBuilder(ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbCenterMarkActionBody", gpDesc), database) {}

ZnDbTorviLayout* ZnCenterMarkBuilder::getLayout() const { return new ZnDbCenterMarkLayout(ZnDbObjectId()); }

ErrorStatus ZnCenterMarkBuilder::initValuesInBody(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbCenterMarkActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  body->resetExtensions();
  body->resetOvershoots();
  body->setCrossHairLengthExpression(ZnTorviStyle::getCrossHairLengthExpression());
  body->setCrossHairGapExpression(ZnTorviStyle::getCrossHairGapExpression());
  return Quorl::eOk;
}

ErrorStatus ZnCenterMarkBuilder::subAddInputEdgeToBody(ZnDbTorviActionBody* body,
                                                       const ZnDbEdgeRef& edge) const {
  auto* mark = ZnDbCenterMarkActionBody::cast(body);
  if (!mark) return Quorl::eInvalidInput;
  if (!ZnTorviStyle::isCentermarkExeVisible()) return mark->setExtensionLinesVisibility(false);
  if (!torvi::isArcSpanChecked()) return Quorl::eOk;
  const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(edge, false));
  if (!curve || !curve->isKindOf(ZnGe::kCircularArc3d)) return Quorl::eInvalidInput;
  const auto& arc = static_cast<const ZnGeCircArc3d&>(*curve);
  return mark->setExtensionLinesVisibility(spanHasLines(arc.endAng() - arc.startAng()));
}
