// Script commands that hand on to the module's commands of the same name.
#include "app/script/module_command.h"

namespace app {

namespace {

bool takeEdges(ScriptArguments& arguments, exchange::CenterWish& wish) {
  do {
    ZnDbFullSubentPath path;
    ZnGePoint3d pick;
    bool isPicked = false;
    if (!arguments.pickedEdge(path, pick, isPicked)) return false;
    wish.edges.push_back(edgeValue(path));
    wish.picks.push_back(isPicked ? std::optional(pointValue(pick)) : std::nullopt);
  } while (arguments.left() > 0);
  return true;
}

bool make(ScriptSession& session, ScriptArguments& arguments, const wchar_t* name) {
  exchange::CenterWish wish;
  exchange::CenterOutcome outcome;
  if (!takeEdges(arguments, wish) || !runFor(arguments, name, wish, outcome)) return false;
  noteCreated(session, outcome.created);
  return true;
}

bool centerMark(ScriptSession& session, ScriptArguments& arguments) {
  return make(session, arguments, L"CENTERMARK");
}

bool centerLine(ScriptSession& session, ScriptArguments& arguments) {
  return make(session, arguments, L"CENTERLINE");
}

bool edgeExtension(ScriptSession& session, ScriptArguments& arguments) {
  return make(session, arguments, L"EDGEEXTENSION");
}

bool reassociate(ScriptSession&, ScriptArguments& arguments) {
  exchange::CenterWish wish;
  exchange::CenterOutcome outcome;
  ZnDbObjectId mark;
  if (!arguments.entity(mark, Pick::kGeneratedFirst) || !takeEdges(arguments, wish)) return false;
  wish.objects = {handleOf(mark)};
  return runFor(arguments, L"REASSOCIATE", wish, outcome);
}

bool disassociate(ScriptSession&, ScriptArguments& arguments) {
  exchange::CenterWish wish;
  exchange::CenterOutcome outcome;
  std::vector<ZnDbObjectId> marks;
  if (!arguments.entities(marks, 0, Pick::kGeneratedFirst)) return false;
  for (const ZnDbObjectId id : marks) wish.objects.push_back(handleOf(id));
  return runFor(arguments, L"DISASSOCIATE", wish, outcome);
}

constexpr ScriptCommand kCommands[] = {
    {"CENTERMARK", "EDGE...", centerMark},
    {"CENTERLINE", "EDGE[@x,y] EDGE[@x,y]", centerLine},
    {"EDGEEXTENSION", "EDGE EDGE", edgeExtension},
    {"REASSOCIATE", "MARK EDGE | LINE EDGE[@x,y] EDGE[@x,y]", reassociate},
    {"DISASSOCIATE", "MARK...", disassociate},
};

} // namespace

std::span<const ScriptCommand> centerCommands() { return kCommands; }

} // namespace app
