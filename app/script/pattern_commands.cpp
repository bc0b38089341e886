// Script commands about center mark patterns: making, editing, and looking at what a pattern would be.
#include <fmt/format.h>

#include "app/formats.h"
#include "app/script/module_command.h"
#include "app/script/preview_entities.h"

namespace app {

namespace {

constexpr const char* kOnOrOff = "ON or OFF";

// ON, OFF or, where it is allowed, AUTO, which leaves it open.
bool takeSwitch(ScriptArguments& arguments, std::optional<bool>& value, bool autoAllowed) {
  value.reset();
  if (autoAllowed && arguments.keyword("AUTO")) return true;
  const bool on = arguments.keyword("ON");
  if (!on && !arguments.keyword("OFF"))
    return arguments.failAtNext(autoAllowed ? "ON, OFF or AUTO" : kOnOrOff);
  value = on;
  return true;
}

bool takeType(ScriptArguments& arguments, exchange::PatternWish& wish) {
  const bool polar = arguments.keyword("POLAR");
  if (!polar && !arguments.keyword("LINEAR")) return arguments.failAtNext("POLAR or LINEAR");
  wish.type = polar ? "polar" : "linear";
  return true;
}

bool takeReference(ScriptArguments& arguments, exchange::PatternWish& wish, bool noneAllowed) {
  wish.clearReference = noneAllowed && arguments.keyword("NONE");
  if (wish.clearReference) return true;
  ZnDbFullSubentPath path;
  if (!arguments.edge(path)) return false;
  wish.reference = edgeValue(path);
  ZnGePoint3d pick;
  bool isThere = false;
  if (!arguments.pickPoint(pick, isThere)) return false;
  if (isThere) wish.referencePick = pointValue(pick);
  return true;
}

bool takeEdge(ScriptArguments& arguments, std::vector<exchange::Edge>& edges) {
  ZnDbFullSubentPath path;
  if (!arguments.edge(path)) return false;
  edges.push_back(edgeValue(path));
  return true;
}

// One option of those that making and previewing have, or else an edge.
bool takeOptionOrEdge(ScriptArguments& arguments, exchange::PatternWish& wish) {
  if (arguments.keyword("TYPE")) return takeType(arguments, wish);
  if (arguments.keyword("REF")) return takeReference(arguments, wish, false);
  if (arguments.keyword("FULL")) return takeSwitch(arguments, wish.full, true);
  if (arguments.keyword("MARK")) return takeSwitch(arguments, wish.centerMark, false);
  return takeEdge(arguments, wish.edges);
}

void noteOutcome(ScriptSession& session, const exchange::PatternOutcome& outcome) {
  if (outcome.added > 0)
    session.console().note(
        fmt::format("auto fill added {} {}", outcome.added, outcome.added == 1 ? "edge" : "edges"));
  const char* what = outcome.ring ? "does not lie on the ring: it has no mark in this pattern"
                                  : "stands beside the row: it has a mark, but no center line";
  for (const std::string& edge : outcome.outside) session.console().note(fmt::format("#{} {}", edge, what));
}

bool make(ScriptSession& session, ScriptArguments& arguments) {
  exchange::PatternWish wish;
  do {
    if (!takeOptionOrEdge(arguments, wish)) return false;
  } while (arguments.left() > 0);
  exchange::PatternOutcome outcome;
  if (!runFor(arguments, L"CENTERPATTERN", wish, outcome)) return false;
  noteCreated(session, outcome.created);
  noteOutcome(session, outcome);
  return true;
}

bool takeOvershoot(ScriptArguments& arguments, exchange::PatternWish& wish) {
  exchange::Overshoot& overshoot = wish.overshoots.emplace_back();
  return arguments.text(overshoot.key, "a center line's key, such as CenterLine-0-1-2") &&
         arguments.number(overshoot.start, "an overshoot before the start") &&
         arguments.number(overshoot.end, "an overshoot behind the end");
}

bool edit(ScriptSession& session, ScriptArguments& arguments) {
  exchange::PatternWish wish;
  ZnDbObjectId pattern;
  if (!arguments.entity(pattern, Pick::kGeneratedFirst)) return false;
  wish.objects = {handleOf(pattern)};
  std::vector<exchange::Edge>* edges = nullptr; // where edges go
  do {
    bool ok = true;
    if (arguments.keyword("ADD"))
      edges = &wish.add;
    else if (arguments.keyword("REMOVE"))
      edges = &wish.remove;
    else if (arguments.keyword("CLEAR"))
      wish.clear = true;
    else if (arguments.keyword("REF"))
      ok = takeReference(arguments, wish, true);
    else if (arguments.keyword("FULL"))
      ok = takeSwitch(arguments, wish.full, false);
    else if (arguments.keyword("MARK"))
      ok = takeSwitch(arguments, wish.centerMark, false);
    else if (arguments.keyword("OVERSHOOT"))
      ok = takeOvershoot(arguments, wish);
    else if (edges)
      ok = takeEdge(arguments, *edges);
    else
      return arguments.failAtNext("ADD, REMOVE, CLEAR, REF, FULL, MARK or OVERSHOOT");
    if (!ok) return false;
  } while (arguments.left() > 0);
  exchange::PatternOutcome outcome;
  if (!runFor(arguments, L"CENTERPATTERN.EDIT", wish, outcome)) return false;
  noteOutcome(session, outcome);
  return true;
}

bool centerPattern(ScriptSession& session, ScriptArguments& arguments) {
  return arguments.keyword("EDIT") ? edit(session, arguments) : make(session, arguments);
}

bool preview(ScriptSession& session, ScriptArguments& arguments) {
  exchange::PatternWish wish;
  std::string file;
  if (!arguments.text(file, "a picture's name")) return false;
  const std::optional<Format> format = formatOf(file);
  if (!format || !isPicture(*format))
    return arguments.fail(file + " is no picture", "a name that ends in " + namesOfEndings(isPicture));
  do {
    ZnGePoint3d cursor;
    const bool isCursor = arguments.keyword("CURSOR");
    if (isCursor ? !arguments.point(cursor) : !takeOptionOrEdge(arguments, wish)) return false;
    if (isCursor) wish.cursor = pointValue(cursor);
  } while (arguments.left() > 0);
  exchange::PreviewOutcome outcome;
  if (!runFor(arguments, L"CENTERPATTERN.PREVIEW", wish, outcome)) return false;
  noteOutcome(session, outcome.pattern);
  const PreviewEntities shown(session.database(), outcome);
  Failure failure;
  return session.savePicture(file, shown.entities(), failure) || arguments.fail(failure.text());
}

constexpr ScriptCommand kCommands[] = {
    {"CENTERPATTERN",
     "EDGE... [TYPE POLAR|LINEAR] [REF EDGE [@x,y]] [FULL ON|OFF|AUTO] [MARK ON|OFF]    on a ring or in a "
     "row\n"
     "                EDIT PATTERN [ADD EDGE...] [REMOVE EDGE...] [CLEAR] [REF EDGE|NONE]\n"
     "                  [FULL ON|OFF] [MARK ON|OFF] [OVERSHOOT KEY START END]",
     centerPattern},
    {"PREVIEW",
     "FILE EDGE... [CURSOR x,y]    a picture of what CENTERPATTERN, with its options, would make of the "
     "edges",
     preview},
};

} // namespace

std::span<const ScriptCommand> patternCommands() { return kCommands; }

} // namespace app
