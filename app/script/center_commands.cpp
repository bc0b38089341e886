// Script commands that hand on to the module's commands of the same name.
#include "app/script/module_command.h"

namespace app {

namespace {

bool takeEdges(ScriptArguments& arguments, CommandCall& call) {
  do {
    ZnDbFullSubentPath path;
    ZnGePoint3d pick;
    bool isPicked = false;
    if (!arguments.pickedEdge(path, pick, isPicked)) return false;
    call.arguments()[L"edges"].append(edgeValue(path));
    call.arguments()[L"picks"].append(isPicked ? pointValue(pick) : ZnRxCommandValue());
  } while (arguments.left() > 0);
  return true;
}

bool make(ScriptSession& session, ScriptArguments& arguments, const wchar_t* name) {
  CommandCall call;
  if (!takeEdges(arguments, call) || !runFor(arguments, name, call)) return false;
  noteCreated(session, call);
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
  CommandCall call;
  ZnDbObjectId mark;
  if (!arguments.entity(mark, Pick::kGeneratedFirst) || !takeEdges(arguments, call)) return false;
  call.arguments()[L"objects"].append(handleText(mark.handle()));
  return runFor(arguments, L"REASSOCIATE", call);
}

bool disassociate(ScriptSession&, ScriptArguments& arguments) {
  CommandCall call;
  std::vector<ZnDbObjectId> marks;
  if (!arguments.entities(marks, 0, Pick::kGeneratedFirst)) return false;
  for (const ZnDbObjectId id : marks) call.arguments()[L"objects"].append(handleText(id.handle()));
  return runFor(arguments, L"DISASSOCIATE", call);
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
