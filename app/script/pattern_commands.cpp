// Script commands about center mark patterns: making, editing, and looking at what a pattern would be.
#include <fmt/format.h>

#include "app/formats.h"
#include "app/script/module_command.h"
#include "app/script/preview_entities.h"

namespace app {

namespace {

constexpr const char* kOnOrOff = "ON or OFF";

// ON, OFF or, where it is allowed, AUTO, which leaves the argument away.
bool takeSwitch(ScriptArguments& arguments, ZnRxCommandValue& value, bool autoAllowed) {
  if (autoAllowed && arguments.keyword("AUTO")) {
    value = ZnRxCommandValue();
    return true;
  }
  const bool on = arguments.keyword("ON");
  if (!on && !arguments.keyword("OFF"))
    return arguments.failAtNext(autoAllowed ? "ON, OFF or AUTO" : kOnOrOff);
  value = on;
  return true;
}

bool takeType(ScriptArguments& arguments, CommandCall& call) {
  const bool polar = arguments.keyword("POLAR");
  if (!polar && !arguments.keyword("LINEAR")) return arguments.failAtNext("POLAR or LINEAR");
  call.arguments()[L"type"] = polar ? L"polar" : L"linear";
  return true;
}

bool takeReference(ScriptArguments& arguments, CommandCall& call, bool noneAllowed) {
  if (noneAllowed && arguments.keyword("NONE")) {
    call.arguments()[L"reference"] = L"none";
    return true;
  }
  ZnDbFullSubentPath path;
  if (!arguments.edge(path)) return false;
  call.arguments()[L"reference"] = edgeValue(path);
  ZnGePoint3d pick;
  bool isThere = false;
  if (!arguments.pickPoint(pick, isThere)) return false;
  if (isThere) call.arguments()[L"referencePick"] = pointValue(pick);
  return true;
}

bool takeEdge(ScriptArguments& arguments, ZnRxCommandValue& edges) {
  ZnDbFullSubentPath path;
  if (!arguments.edge(path)) return false;
  edges.append(edgeValue(path));
  return true;
}

// One option of those that making and previewing have; taken is false when the next word is none.
bool takeOption(ScriptArguments& arguments, CommandCall& call, bool& taken) {
  taken = true;
  if (arguments.keyword("TYPE")) return takeType(arguments, call);
  if (arguments.keyword("REF")) return takeReference(arguments, call, false);
  if (arguments.keyword("FULL")) return takeSwitch(arguments, call.arguments()[L"full"], true);
  if (arguments.keyword("MARK")) return takeSwitch(arguments, call.arguments()[L"centerMark"], false);
  taken = false;
  return true;
}

void noteOutcome(ScriptSession& session, const CommandCall& call) {
  if (const std::int64_t added = call.result().at(L"added").asInt(); added > 0)
    session.console().note(fmt::format("auto fill added {} {}", added, added == 1 ? "edge" : "edges"));
  const char* what = call.result().at(L"ring").asBool()
                         ? "does not lie on the ring: it has no mark in this pattern"
                         : "stands beside the row: it has a mark, but no center line";
  for (const ZnRxCommandValue& edge : call.result().at(L"outside").items())
    session.console().note(fmt::format("#{} {}", edge.asString().utf8(), what));
}

bool make(ScriptSession& session, ScriptArguments& arguments) {
  CommandCall call;
  do {
    bool taken = false;
    if (!takeOption(arguments, call, taken)) return false;
    if (!taken && !takeEdge(arguments, call.arguments()[L"edges"])) return false;
  } while (arguments.left() > 0);
  if (!runFor(arguments, L"CENTERPATTERN", call)) return false;
  noteCreated(session, call);
  noteOutcome(session, call);
  return true;
}

bool takeOvershoot(ScriptArguments& arguments, CommandCall& call) {
  std::string key;
  double start = 0.0, end = 0.0;
  if (!arguments.text(key, "a center line's key, such as CenterLine-0-1-2") ||
      !arguments.number(start, "an overshoot before the start") ||
      !arguments.number(end, "an overshoot behind the end"))
    return false;
  ZnRxCommandValue& entry = call.arguments()[L"overshoots"].append(ZnRxCommandValue::object());
  entry[L"key"] = ZnString::fromUtf8(key);
  entry[L"start"] = start;
  entry[L"end"] = end;
  return true;
}

bool edit(ScriptSession& session, ScriptArguments& arguments) {
  CommandCall call;
  ZnDbObjectId pattern;
  if (!arguments.entity(pattern, Pick::kGeneratedFirst)) return false;
  call.arguments()[L"objects"].append(handleText(pattern.handle()));
  const wchar_t* list = nullptr; // where edges go
  do {
    bool ok = true;
    if (arguments.keyword("ADD"))
      list = L"add";
    else if (arguments.keyword("REMOVE"))
      list = L"remove";
    else if (arguments.keyword("CLEAR"))
      call.arguments()[L"clear"] = true;
    else if (arguments.keyword("REF"))
      ok = takeReference(arguments, call, true);
    else if (arguments.keyword("FULL"))
      ok = takeSwitch(arguments, call.arguments()[L"full"], false);
    else if (arguments.keyword("MARK"))
      ok = takeSwitch(arguments, call.arguments()[L"centerMark"], false);
    else if (arguments.keyword("OVERSHOOT"))
      ok = takeOvershoot(arguments, call);
    else if (list)
      ok = takeEdge(arguments, call.arguments()[list]);
    else
      return arguments.failAtNext("ADD, REMOVE, CLEAR, REF, FULL, MARK or OVERSHOOT");
    if (!ok) return false;
  } while (arguments.left() > 0);
  if (!runFor(arguments, L"CENTERPATTERN.EDIT", call)) return false;
  noteOutcome(session, call);
  return true;
}

bool centerPattern(ScriptSession& session, ScriptArguments& arguments) {
  return arguments.keyword("EDIT") ? edit(session, arguments) : make(session, arguments);
}

bool preview(ScriptSession& session, ScriptArguments& arguments) {
  CommandCall call;
  std::string file;
  if (!arguments.text(file, "a picture's name")) return false;
  const std::optional<Format> format = formatOf(file);
  if (!format || *format == Format::kBdoc || *format == Format::kTdoc)
    return arguments.fail(file + " is no picture", "a name that ends in .svg, .pdf or .png");
  do {
    bool taken = false;
    if (arguments.keyword("CURSOR")) {
      ZnGePoint3d cursor;
      if (!arguments.point(cursor)) return false;
      call.arguments()[L"cursor"] = pointValue(cursor);
      continue;
    }
    if (!takeOption(arguments, call, taken)) return false;
    if (!taken && !takeEdge(arguments, call.arguments()[L"edges"])) return false;
  } while (arguments.left() > 0);
  if (!runFor(arguments, L"CENTERPATTERN.PREVIEW", call)) return false;
  noteOutcome(session, call);
  const PreviewEntities shown(session.database(), call.result());
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
