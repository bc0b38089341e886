// The commands CENTERPATTERN and CENTERPATTERN.EDIT. What they take and tell stands in
// exchange/center_commands.h. Each is done whole, or nothing is.
#include "companion/center_kind.h"
#include "companion/command_arguments.h"
#include "companion/object_naming.h"
#include "companion/pattern_options.h"
#include "companion/pattern_preview.h"
#include "companion/pattern_report.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/pattern/transient_layout.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

using Pattern = ZnDbCenterMarkPatternObjectWrapper;

ZnString edgeName(const ZnDbEdgeRef& edge) { return ZnString::fromUtf8("#" + pathText(edge.entity())); }

// Tells which edges stand beside the center line. A ring of one hole is refused: a reference about another
// center leaves no more of it.
ErrorStatus tellOutside(ZnRxCommandContext& context, const Pattern& pattern,
                        exchange::PatternOutcome& outcome) {
  ZnArray<ZnDbEdgeRef> edges;
  ZnArray<ZnString> keys;
  ZnArray<int> members;
  pattern.getEdgeRefs(edges);
  pattern.getCenterLineDependencyKeys(keys);
  if (!keys.isEmpty()) ZnDbCenterMarkPatternActionBody::getEdgeIndicesOnCenterLine(keys.first(), members);
  for (int i = 0; i < edges.length() && !members.isEmpty(); ++i) {
    if (edges[i].isEmpty() || members.contains(i)) continue;
    outcome.outside.push_back(pathText(edges[i].entity()));
  }
  outcome.ring = pattern.getCenterPatternType() == kCenterPatternPolar;
  return outcome.ring && members.length() < 2
             ? context.fail(Quorl::eInvalidInput, L"the circles do not lie on one ring")
             : Quorl::eOk;
}

// One pattern, and nothing else.
ErrorStatus patternOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                      const std::vector<std::string>& handles, ZnDbObjectId& id) {
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = centerObjectsOf(context, database, handles, objects); status != Quorl::eOk)
    return status;
  if (objects.size() != 1) return context.fail(Quorl::eInvalidInput, L"one pattern is wanted");
  id = objects.front();
  if (ZnDbTorviObjectWrapper::getCenterType(id) == kCenterMarkPattern) return Quorl::eOk;
  return context.fail(Quorl::eWrongWrapperKind, L"the object is no center mark pattern");
}

// Steps of an edit, in the order in which they are done.
class PatternEdit {
public:
  PatternEdit(ZnRxCommandContext& context, ZnDbDatabase& database, const exchange::PatternWish& wish,
              ZnDbObjectId id)
      : context_(context)
      , database_(database)
      , wish_(wish)
      , id_(id)
      , pattern_(id)
      , builder_(&database) {}

  ErrorStatus run();

private:
  ErrorStatus readEdges();
  ErrorStatus changeEdges();
  ErrorStatus changeReference();
  ErrorStatus changeOvershoots();
  ErrorStatus write();

  ZnRxCommandContext& context_;
  ZnDbDatabase& database_;
  const exchange::PatternWish& wish_;
  ZnDbObjectId id_;
  Pattern pattern_;
  ZnCenterMarkPatternBuilder builder_;
  PatternOptions options_;
  ZnArray<ZnDbEdgeRef> removed_, added_;
  exchange::PatternOutcome outcome_;
};

ErrorStatus PatternEdit::readEdges() {
  if (wish_.type) return context_.fail(Quorl::eInvalidInput, L"a pattern keeps its type");
  ErrorStatus status = readPatternOptions(context_, database_, wish_, options_);
  if (status == Quorl::eOk && !wish_.remove.empty())
    status = roundEdgesOf(context_, database_, wish_.remove, removed_);
  if (status == Quorl::eOk && !wish_.add.empty())
    status = roundEdgesOf(context_, database_, wish_.add, added_);
  return status;
}

ErrorStatus PatternEdit::changeEdges() {
  if (wish_.clear || !removed_.isEmpty()) builder_.suppressAutoFill(true);
  if (wish_.clear) {
    // New edges decide whether the ring is closed; its center mark is the user's.
    const bool isRing = builder_.patternType() == kCenterPatternPolar;
    if (!options_.centerMark) options_.centerMark = isRing && builder_.showCenterMark();
    builder_.clearInput();
  }
  for (const ZnDbEdgeRef& edge : removed_)
    if (!builder_.removeInputEdge(edge))
      return context_.fail(Quorl::eInvalidInput, ZnString(L"the pattern does not follow ") + edgeName(edge));
  for (const ZnDbEdgeRef& edge : added_) {
    if (builder_.inputEdges().contains(edge))
      return context_.fail(Quorl::eInvalidInput,
                           ZnString(L"the pattern follows ") + edgeName(edge) + L" already");
    builder_.addInputEdge(edge);
  }
  if (builder_.inputEdges().isEmpty())
    return context_.fail(Quorl::eNoInputEdges, L"the pattern would follow no edge: DISASSOCIATE lets it go");
  return Quorl::eOk;
}

ErrorStatus PatternEdit::changeReference() {
  if (const ErrorStatus status = setReference(context_, options_, builder_); status != Quorl::eOk)
    return status;
  // An evaluation would pass over a reference that does not fit; here it was asked for.
  ZnDbEdgeRef edge;
  double param = 0.0;
  if (options_.reference.isEmpty() || !builder_.getReferenceEdge(edge, param)) return Quorl::eOk;
  ZnDbCenterMarkPatternTransientLayout layout(builder_.patternType(), edge, param, false, false, false);
  if (layout.loadCircles(builder_.inputEdges()) && layout.analysePattern()) return Quorl::eOk;
  return context_.fail(Quorl::eInvalidInput, L"the reference does not fit the circles");
}

// Before the edges are written: the keys are those that the user sees now, and values move on with them.
ErrorStatus PatternEdit::changeOvershoots() {
  for (const exchange::Overshoot& wanted : wish_.overshoots) {
    const ZnString key = ZnString::fromUtf8(wanted.key);
    ErrorStatus status = pattern_.setStartOvershoot(key, wanted.start);
    if (status == Quorl::eOk) status = pattern_.setEndOvershoot(key, wanted.end);
    if (status != Quorl::eOk)
      return context_.fail(status, ZnString(L"no center line \"") + key + L"\" takes these overshoots");
  }
  return Quorl::eOk;
}

ErrorStatus PatternEdit::write() {
  ErrorStatus status = builder_.modifyTorvi();
  // A pattern that was given edges again is no longer one that its user let go.
  if (status == Quorl::eOk && !added_.isEmpty()) status = pattern_.setIsExplicitlyDeassociatived(false);
  if (status == Quorl::eOk && hasEvaluationFailed(id_)) status = Quorl::eInvalidInput;
  if (status != Quorl::eOk)
    return context_.fail(status, ZnString(L"the circles make no such pattern any more (") +
                                     statusText(status) + L")");
  return tellOutside(context_, pattern_, outcome_);
}

ErrorStatus PatternEdit::run() {
  if (const ErrorStatus status = readEdges(); status != Quorl::eOk) return status;
  if (const ErrorStatus status = builder_.loadTorvi(id_); status != Quorl::eOk)
    return context_.fail(status, ZnString(L"the pattern could not be read (") + statusText(status) + L")");
  ZnDbTransaction transaction(database_);
  ErrorStatus status = changeEdges();
  if (status == Quorl::eOk) status = changeReference();
  if (status == Quorl::eOk) status = setRingOptions(context_, options_, builder_);
  if (status == Quorl::eOk) status = changeOvershoots();
  if (status == Quorl::eOk) status = write();
  if (status != Quorl::eOk) return status;
  outcome_.added = addedEdges(builder_);
  context_.result() = exchange::toJson(outcome_);
  return transaction.end();
}

ErrorStatus centerPattern(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::PatternWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  PatternOptions options;
  if (const ErrorStatus status = readPatternOptions(context, *database, wish, options); status != Quorl::eOk)
    return status;
  ZnArray<ZnDbEdgeRef> edges;
  if (const ErrorStatus status = roundEdgesOf(context, *database, wish.edges, edges); status != Quorl::eOk)
    return status;
  ZnCenterMarkPatternBuilder builder(database);
  if (const ErrorStatus status = fillBuilder(context, edges, options, builder); status != Quorl::eOk)
    return status;

  ZnDbTransaction transaction(*database);
  ZnDbObjectId id;
  ErrorStatus status = builder.createTorvi(id);
  if (status == Quorl::eOk && hasEvaluationFailed(id)) status = Quorl::eInvalidInput;
  if (status != Quorl::eOk)
    return context.fail(status, ZnString(L"the pattern could not be made (") + statusText(status) + L")");
  exchange::PatternOutcome outcome;
  if (status = tellOutside(context, Pattern(id), outcome); status != Quorl::eOk) return status;
  outcome.created = {nameOf(id)};
  outcome.added = addedEdges(builder);
  context.result() = exchange::toJson(outcome);
  return transaction.end();
}

// Taking edges away suspends auto fill, which would bring them back.
ErrorStatus centerPatternEdit(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::PatternWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  ZnDbObjectId id;
  if (const ErrorStatus status = patternOf(context, *database, wish.objects, id); status != Quorl::eOk)
    return status;
  return PatternEdit(context, *database, wish, id).run();
}

ErrorStatus refuseToReassociate(ZnRxCommandContext& context, ZnDbDatabase&, const exchange::CenterWish&,
                                ZnDbObjectId) {
  return context.fail(Quorl::eWrongWrapperKind, L"a pattern gets its edges by CENTERPATTERN EDIT");
}

constexpr CommandRow kCommands[] = {
    {L"CENTERPATTERN", centerPattern},
    {L"CENTERPATTERN.EDIT", centerPatternEdit},
    {L"CENTERPATTERN.PREVIEW", centerPatternPreview},
};

} // namespace

const CenterKind kPatternKind = {kCenterMarkPattern, kCommands, describePattern, refuseToReassociate};

} // namespace companion
