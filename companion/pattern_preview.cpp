#include <memory>
#include <set>

#include "companion/commands.h"
#include "companion/curve_values.h"
#include "companion/pattern_commands.h"
#include "companion/pattern_options.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

ZnRxCommandValue linetypeValue(const ZnDbLinetypeTableRecord& record) {
  ZnRxCommandValue value = ZnRxCommandValue::object();
  value[L"name"] = record.name();
  ZnRxCommandValue& dashes = value[L"dashes"] = ZnRxCommandValue::array();
  for (int i = 0; i < record.numDashes(); ++i) dashes.append(record.dashLengthAt(i));
  value[L"scaledToFit"] = record.isScaledToFit();
  return value;
}

void tellCurves(ZnRxCommandContext& context, const std::vector<std::unique_ptr<ZnDbCurve>>& curves) {
  ZnRxCommandValue values = ZnRxCommandValue::array(), linetypes = ZnRxCommandValue::array();
  std::set<ZnDbObjectId> told;
  for (const auto& curve : curves) {
    ZnRxCommandValue& value = values.append(ZnRxCommandValue::object());
    describeShape(*curve, ZnGeMatrix3d::kIdentity, value);
    if (const auto* arc = ZnDbArc::cast(curve.get()))
      value[L"normal"] = pointValue(ZnGePoint3d() + arc->normal());
    value[L"layer"] = curve->layer();
    value[L"linetype"] = curve->linetype();
    value[L"linetypeScale"] = curve->linetypeScale();
    ZnDbHolder<ZnDbLinetypeTableRecord> record(curve->linetypeId());
    if (record.isOpen() && told.insert(curve->linetypeId()).second) linetypes.append(linetypeValue(*record));
  }
  context.result()[L"curves"] = values;
  context.result()[L"linetypes"] = linetypes;
}

} // namespace

ErrorStatus centerPatternPreview(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  PatternOptions options;
  if (const ErrorStatus status = readPatternOptions(context, *database, options); status != Quorl::eOk)
    return status;
  ZnArray<ZnDbEdgeRef> edges;
  if (const ErrorStatus status = roundEdgesOf(context, *database, L"edges", edges); status != Quorl::eOk)
    return status;
  // Layer and linetype of the curves are looked up, and made where missing, in a drawing of its own.
  ZnDbDatabase scratch;
  ZnCenterMarkPatternBuilder builder(&scratch);
  if (const ErrorStatus status = fillBuilder(context, edges, options, builder); status != Quorl::eOk)
    return status;
  const ZnRxCommandValue::Array& cursor = context.arguments().at(L"cursor").items();
  ZnGePoint3d point;
  if (cursor.size() == 3) point.set(cursor[0].asDouble(), cursor[1].asDouble(), cursor[2].asDouble());
  ZnArray<ZnDbCurve*> made;
  const ErrorStatus status = builder.createTorviTransients(cursor.size() == 3 ? &point : nullptr, made);
  std::vector<std::unique_ptr<ZnDbCurve>> curves;
  for (ZnDbCurve* curve : made) curves.emplace_back(curve);
  if (status != Quorl::eOk) return context.fail(status, L"the circles make no pattern");
  tellCurves(context, curves);
  return Quorl::eOk;
}

} // namespace companion
