#include "companion/pattern_options.h"

#include "companion/command_arguments.h"
#include "companion/object_naming.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

// Two circles always lie on a line, and on as many rings as one likes.
constexpr int kMostUndecidedCircles = 2;
constexpr double kNoPick = -1.0;

std::optional<bool> flagOf(const ZnRxCommandValue& value) {
  if (value.kind() != ZnRxCommandValue::Kind::kBool) return std::nullopt;
  return value.asBool();
}

ErrorStatus readType(ZnRxCommandContext& context, PatternOptions& options) {
  const ZnString type = context.arguments().at(L"type").asString();
  if (type == L"polar")
    options.type = kCenterPatternPolar;
  else if (type == L"linear")
    options.type = kCenterPatternLinear;
  else if (!type.isEmpty())
    return context.fail(Quorl::eInvalidInput, L"a pattern is \"polar\" or \"linear\"");
  return Quorl::eOk;
}

ErrorStatus readReference(ZnRxCommandContext& context, ZnDbDatabase& database, PatternOptions& options) {
  const ZnRxCommandValue& reference = context.arguments().at(L"reference");
  if (reference.isNull()) return Quorl::eOk;
  options.clearsReference = reference.asString() == L"none";
  if (options.clearsReference) return Quorl::eOk;
  ZnDbFullSubentPath path;
  if (!edgeOf(database, reference, path) ||
      ZnTorviLyxUtils::createEdgeRef(path, options.reference) != Quorl::eOk || options.reference.isEmpty())
    return context.fail(Quorl::eInvalidInput, L"the reference is an edge that the drawing does not have");
  const ZnRxCommandValue::Array& pick = context.arguments().at(L"referencePick").items();
  if (pick.size() == 3)
    options.referencePick.emplace(pick[0].asDouble(), pick[1].asDouble(), pick[2].asDouble());
  return Quorl::eOk;
}

ErrorStatus failToFit(ZnRxCommandContext& context, CenterMarkPatternType type) {
  constexpr const wchar_t* kWhy[] = {L"the circles lie neither on a ring nor in a row",
                                     L"the circles do not lie on one ring",
                                     L"the circles do not lie in one row"};
  return context.fail(Quorl::eInvalidInput, kWhy[type]);
}

} // namespace

ErrorStatus readPatternOptions(ZnRxCommandContext& context, ZnDbDatabase& database, PatternOptions& options) {
  options.full = flagOf(context.arguments().at(L"full"));
  options.centerMark = flagOf(context.arguments().at(L"centerMark"));
  const ErrorStatus status = readType(context, options);
  return status == Quorl::eOk ? readReference(context, database, options) : status;
}

ErrorStatus roundEdgesOf(ZnRxCommandContext& context, ZnDbDatabase& database, const wchar_t* argument,
                         ZnArray<ZnDbEdgeRef>& edges) {
  std::vector<ZnDbFullSubentPath> paths;
  if (const ErrorStatus status = edgesOf(context, database, paths, argument); status != Quorl::eOk)
    return status;
  for (const ZnDbFullSubentPath& path : paths) {
    const ZnString name = ZnString(L"#") + pathText(ZnDbCompoundObjectId(path));
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
  tellAdded(context, builder);
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

void tellAdded(ZnRxCommandContext& context, const ZnCenterMarkPatternBuilder& builder) {
  context.result()[L"added"] = builder.inputEdges().length() - builder.inputEdgeCount();
}

} // namespace companion
