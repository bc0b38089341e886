#include "companion/pattern_options.h"

#include "companion/command_arguments.h"
#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

// Two circles always lie on a line, and on as many rings as one likes.
constexpr int kMostUndecidedCircles = 2;
constexpr double kNoPick = -1.0;

ErrorStatus readType(ZnRxCommandContext& context, const exchange::PatternWish& wish,
                     PatternOptions& options) {
  if (wish.type == "polar")
    options.type = kCenterPatternPolar;
  else if (wish.type == "linear")
    options.type = kCenterPatternLinear;
  else if (wish.type)
    return context.fail(Quorl::eInvalidInput, L"a pattern is \"polar\" or \"linear\"");
  return Quorl::eOk;
}

ErrorStatus readReference(ZnRxCommandContext& context, ZnDbDatabase& database,
                          const exchange::PatternWish& wish, PatternOptions& options) {
  options.clearsReference = wish.clearReference;
  if (!wish.reference || wish.clearReference) return Quorl::eOk;
  ZnDbFullSubentPath path;
  if (!edgeOf(database, *wish.reference, path) ||
      ZnTorviLyxUtils::createEdgeRef(path, options.reference) != Quorl::eOk || options.reference.isEmpty())
    return context.fail(Quorl::eInvalidInput, L"the reference is an edge that the drawing does not have");
  if (wish.referencePick) options.referencePick = pointOf(*wish.referencePick);
  return Quorl::eOk;
}

ErrorStatus failToFit(ZnRxCommandContext& context, CenterMarkPatternType type) {
  constexpr const wchar_t* kWhy[] = {L"the circles lie neither on a ring nor in a row",
                                     L"the circles do not lie on one ring",
                                     L"the circles do not lie in one row"};
  return context.fail(Quorl::eInvalidInput, kWhy[type]);
}

} // namespace

ErrorStatus readPatternOptions(ZnRxCommandContext& context, ZnDbDatabase& database,
                               const exchange::PatternWish& wish, PatternOptions& options) {
  options.full = wish.full;
  options.centerMark = wish.centerMark;
  const ErrorStatus status = readType(context, wish, options);
  return status == Quorl::eOk ? readReference(context, database, wish, options) : status;
}

ErrorStatus roundEdgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                         const std::vector<exchange::Edge>& wanted, ZnArray<ZnDbEdgeRef>& edges) {
  std::vector<ZnDbFullSubentPath> paths;
  if (const ErrorStatus status = edgesOf(context, database, wanted, paths); status != Quorl::eOk)
    return status;
  for (const ZnDbFullSubentPath& path : paths) {
    const ZnString name = ZnString::fromUtf8("#" + pathText(ZnDbCompoundObjectId(path)));
    ZnDbEdgeRef edge;
    if (ZnTorviLyxUtils::createEdgeRef(path, edge) != Quorl::eOk || !isRound(edge))
      return context.fail(Quorl::eInvalidInput, name + L" is no circle or arc");
    if (edges.contains(edge)) return context.fail(Quorl::eInvalidInput, name + L" is given twice");
    edges.append(edge);
  }
  return Quorl::eOk;
}

ErrorStatus fillBuilder(ZnRxCommandContext& context, const ZnArray<ZnDbEdgeRef>& edges,
                        const PatternOptions& options, ZnCenterMarkPatternBuilder& builder) {
  // The builder drops a type that the edges so far do not bear out; a wanted one is told again each time.
  const auto tellType = [&] {
    if (options.type != kCenterPatternNone) builder.setPatternType(options.type);
  };
  builder.suppressAutoFill(true);
  tellType();
  builder.setInputEdges(edges);
  if (!options.reference.isEmpty()) {
    tellType();
    if (const ErrorStatus status = setReference(context, options, builder); status != Quorl::eOk)
      return status;
  }
  const CenterMarkPatternType found = builder.patternType();
  tellType();
  builder.suppressAutoFill(false);
  if (!builder.autoFillPattern()) {
    builder.setPatternType(found);
    const bool mayStayOpen = edges.length() <= kMostUndecidedCircles && options.type != kCenterPatternPolar;
    if (found == kCenterPatternNone && !mayStayOpen) return failToFit(context, options.type);
  }
  return setRingOptions(context, options, builder);
}

ErrorStatus setReference(ZnRxCommandContext& context, const PatternOptions& options,
                         ZnCenterMarkPatternBuilder& builder) {
  if (options.clearsReference) builder.clearReferenceEdge();
  if (options.reference.isEmpty()) return Quorl::eOk;
  if (!options.referencePick)
    builder.setReferenceEdge(options.reference, kNoPick);
  else if (!builder.setReferenceEdge(options.reference, *options.referencePick))
    return context.fail(Quorl::eInvalidInput, L"the reference is picked beyond its ends");
  if (!builder.hasReferenceEdge())
    return context.fail(Quorl::eInvalidInput, L"the reference does not fit the circles");
  return Quorl::eOk;
}

ErrorStatus setRingOptions(ZnRxCommandContext& context, const PatternOptions& options,
                           ZnCenterMarkPatternBuilder& builder) {
  const bool isRing = builder.patternType() == kCenterPatternPolar;
  if (!isRing && options.full.value_or(false))
    return context.fail(Quorl::eInvalidInput, L"only a ring can be closed");
  if (!isRing && options.centerMark.value_or(false))
    return context.fail(Quorl::eInvalidInput, L"only a ring has a center to mark");
  if (options.full) {
    builder.setAutoFullPCD(false);
    builder.setIsFullPCD(*options.full);
  }
  if (options.centerMark) builder.setShowCentermark(*options.centerMark);
  return Quorl::eOk;
}

int addedEdges(const ZnCenterMarkPatternBuilder& builder) {
  return builder.inputEdges().length() - builder.inputEdgeCount();
}

} // namespace companion
