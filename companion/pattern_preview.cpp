#include "companion/pattern_preview.h"

#include <memory>
#include <set>

#include "companion/command_arguments.h"
#include "companion/curve_values.h"
#include "companion/pattern_options.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

exchange::PreviewLinetype linetypeOf(const ZnDbLinetypeTableRecord& record) {
  exchange::PreviewLinetype linetype;
  linetype.name = record.name().utf8();
  for (int i = 0; i < record.numDashes(); ++i) linetype.dashes.push_back(record.dashLengthAt(i));
  linetype.scaledToFit = record.isScaledToFit();
  return linetype;
}

void tellCurves(const std::vector<std::unique_ptr<ZnDbCurve>>& curves, exchange::PreviewOutcome& outcome) {
  std::set<ZnDbObjectId> told;
  for (const auto& curve : curves) {
    exchange::PreviewCurve& shown = outcome.curves.emplace_back();
    shown.shape = shapeOf(*curve, ZnGeMatrix3d::kIdentity);
    if (const auto* arc = ZnDbArc::cast(curve.get()))
      shown.normal = pointValue(ZnGePoint3d() + arc->normal());
    shown.layer = curve->layer().utf8();
    shown.linetype = curve->linetype().utf8();
    shown.linetypeScale = curve->linetypeScale();
    ZnDbHolder<ZnDbLinetypeTableRecord> record(curve->linetypeId());
    if (record.isOpen() && told.insert(curve->linetypeId()).second)
      outcome.linetypes.push_back(linetypeOf(*record));
  }
}

} // namespace

ErrorStatus centerPatternPreview(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::PatternWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  PatternOptions options;
  if (const ErrorStatus status = readPatternOptions(context, *database, wish, options); status != Quorl::eOk)
    return status;
  ZnArray<ZnDbEdgeRef> edges;
  if (const ErrorStatus status = roundEdgesOf(context, *database, wish.edges, edges); status != Quorl::eOk)
    return status;
  // Layer and linetype of the curves are looked up, and made where missing, in a drawing of its own.
  ZnDbDatabase scratch;
  ZnCenterMarkPatternBuilder builder(&scratch);
  if (const ErrorStatus status = fillBuilder(context, edges, options, builder); status != Quorl::eOk)
    return status;
  const ZnGePoint3d cursor = wish.cursor ? pointOf(*wish.cursor) : ZnGePoint3d();
  ZnArray<ZnDbCurve*> made;
  const ErrorStatus status = builder.createTorviTransients(wish.cursor ? &cursor : nullptr, made);
  std::vector<std::unique_ptr<ZnDbCurve>> curves;
  for (ZnDbCurve* curve : made) curves.emplace_back(curve);
  if (status != Quorl::eOk) return context.fail(status, L"the circles make no pattern");
  exchange::PreviewOutcome outcome;
  outcome.pattern.added = addedEdges(builder);
  tellCurves(curves, outcome);
  context.result() = exchange::toJson(outcome);
  return Quorl::eOk;
}

} // namespace companion
