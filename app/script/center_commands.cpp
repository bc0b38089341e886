// Script commands that hand on to the module's commands of the same name.
#include "app/center_module.h"
#include "app/script/script_command.h"

namespace app {

namespace {

ZnRxCommandValue edgeValue(const ZnDbFullSubentPath& path) {
  ZnRxCommandValue value = ZnRxCommandValue::object();
  ZnRxCommandValue& handles = value[L"path"] = ZnRxCommandValue::array();
  for (const ZnDbObjectId id : path.objectIds()) handles.append(handleText(id.handle()));
  value[L"index"] = path.subentId().index();
  return value;
}

bool takeEdges(ScriptArguments& arguments, CommandCall& call) {
  do {
    ZnDbFullSubentPath path;
    if (!arguments.edge(path)) return false;
    call.arguments()[L"edges"].append(edgeValue(path));
  } while (arguments.left() > 0);
  return true;
}

bool run(const wchar_t* name, ScriptArguments& arguments, CommandCall& call) {
  std::string why;
  return runCommand(name, call, why) || arguments.fail(why);
}

bool centerMark(ScriptSession& session, ScriptArguments& arguments) {
  constexpr const wchar_t* kName = L"CENTERMARK";
  CommandCall call;
  if (!takeEdges(arguments, call) || !run(kName, arguments, call)) return false;
  for (const ZnRxCommandValue& handle : call.result().at(L"created").items()) {
    ZnDbObjectId id;
    if (session.database().getZnDbObjectId(id, false, handle.asString().asZnDbHandle()) == Quorl::eOk)
      session.noteMade(id);
  }
  return true;
}

bool reassociate(ScriptSession&, ScriptArguments& arguments) {
  CommandCall call;
  ZnDbObjectId mark;
  if (!arguments.entity(mark, Pick::kGeneratedFirst) || !takeEdges(arguments, call)) return false;
  call.arguments()[L"objects"].append(handleText(mark.handle()));
  return run(L"REASSOCIATE", arguments, call);
}

bool disassociate(ScriptSession&, ScriptArguments& arguments) {
  CommandCall call;
  std::vector<ZnDbObjectId> marks;
  if (!arguments.entities(marks, 0, Pick::kGeneratedFirst)) return false;
  for (const ZnDbObjectId id : marks) call.arguments()[L"objects"].append(handleText(id.handle()));
  return run(L"DISASSOCIATE", arguments, call);
}

constexpr ScriptCommand kCommands[] = {
    {"CENTERMARK", "EDGE...", centerMark},
    {"REASSOCIATE", "MARK EDGE", reassociate},
    {"DISASSOCIATE", "MARK...", disassociate},
};

} // namespace

std::span<const ScriptCommand> centerCommands() { return kCommands; }

} // namespace app
