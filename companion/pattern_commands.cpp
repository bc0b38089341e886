#include "companion/pattern_commands.h"

#include "companion/command_arguments.h"
#include "companion/commands.h"
#include "companion/mark_commands.h"
#include "companion/object_naming.h"
#include "companion/pattern_options.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/pattern/transient_layout.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

using Pattern = ZnDbCenterMarkPatternObjectWrapper;

ZnString edgeName(const ZnDbEdgeRef& edge) { return ZnString(L"#") + pathText(edge.entity()); }

// Tells which edges stand beside the center line. A ring of one hole is refused: a reference about another
// center leaves no more of it.
ErrorStatus tellOutside(ZnRxCommandContext& context, const Pattern& pattern) {
  ZnRxCommandValue outside = ZnRxCommandValue::array();
  ZnArray<ZnDbEdgeRef> edges;
  ZnArray<ZnString> keys;
  ZnArray<int> members;
  pattern.getEdgeRefs(edges);
  pattern.getCenterLineDependencyKeys(keys);
  if (!keys.isEmpty()) ZnDbCenterMarkPatternActionBody::getEdgeIndicesOnCenterLine(keys.first(), members);
  for (int i = 0; i < edges.length() && !members.isEmpty(); ++i) {
    if (edges[i].isEmpty() || members.contains(i)) continue;
    outside.append(pathText(edges[i].entity()));
  }
  context.result()[L"outside"] = outside;
  const bool isRing = pattern.getCenterPatternType() == kCenterPatternPolar;
  context.result()[L"ring"] = isRing;
  return isRing && members.length() < 2
             ? context.fail(Quorl::eInvalidInput, L"the circles do not lie on one ring")
             : Quorl::eOk;
}

// One pattern, and nothing else, in "objects".
ErrorStatus patternOf(ZnRxCommandContext& context, ZnDbDatabase& database, ZnDbObjectId& id) {
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = centerObjectsOf(context, database, objects); status != Quorl::eOk)
    return status;
  if (objects.size() != 1) return context.fail(Quorl::eInvalidInput, L"one pattern is wanted");
  id = objects.front();
  if (ZnDbTorviObjectWrapper::getCenterType(id) == kCenterMarkPattern) return Quorl::eOk;
  return context.fail(Quorl::eWrongWrapperKind, L"the object is no center mark pattern");
}

bool isGiven(const ZnRxCommandContext& context, const wchar_t* argument) {
  return !context.arguments().at(argument).items().empty();
}

// Steps of an edit, in the order in which they are done.
class PatternEdit {
public:
  PatternEdit(ZnRxCommandContext& context, ZnDbDatabase& database, ZnDbObjectId id)
      : context_(context)
      , database_(database)
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
  ZnDbObjectId id_;
  Pattern pattern_;
  ZnCenterMarkPatternBuilder builder_;
  PatternOptions options_;
  ZnArray<ZnDbEdgeRef> removed_, added_;
};

ErrorStatus PatternEdit::readEdges() {
  if (!context_.arguments().at(L"type").isNull())
    return context_.fail(Quorl::eInvalidInput, L"a pattern keeps its type");
  ErrorStatus status = readPatternOptions(context_, database_, options_);
  if (status == Quorl::eOk && isGiven(context_, L"remove"))
    status = roundEdgesOf(context_, database_, L"remove", removed_);
  if (status == Quorl::eOk && isGiven(context_, L"add"))
    status = roundEdgesOf(context_, database_, L"add", added_);
  return status;
}

ErrorStatus PatternEdit::changeEdges() {
  const bool clears = context_.arguments().at(L"clear").asBool();
  if (clears || !removed_.isEmpty()) builder_.suppressAutoFill(true);
  if (clears) {
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
  for (const ZnRxCommandValue& entry : context_.arguments().at(L"overshoots").items()) {
    const ZnString key = entry.at(L"key").asString();
    ErrorStatus status = pattern_.setStartOvershoot(key, entry.at(L"start").asDouble());
    if (status == Quorl::eOk) status = pattern_.setEndOvershoot(key, entry.at(L"end").asDouble());
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
  return tellOutside(context_, pattern_);
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
  tellAdded(context_, builder_);
  return transaction.end();
}

} // namespace

ErrorStatus centerPattern(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  PatternOptions options;
  if (const ErrorStatus status = readPatternOptions(context, *database, options); status != Quorl::eOk)
    return status;
  ZnArray<ZnDbEdgeRef> edges;
  if (const ErrorStatus status = roundEdgesOf(context, *database, L"edges", edges); status != Quorl::eOk)
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
  if (status = tellOutside(context, Pattern(id)); status != Quorl::eOk) return status;
  ZnRxCommandValue created = ZnRxCommandValue::array();
  created.append(handleText(id.handle()));
  context.result()[L"created"] = created;
  return transaction.end();
}

ErrorStatus centerPatternEdit(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  ZnDbObjectId id;
  if (const ErrorStatus status = patternOf(context, *database, id); status != Quorl::eOk) return status;
  return PatternEdit(context, *database, id).run();
}

} // namespace companion
