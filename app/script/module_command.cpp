#include "app/script/module_command.h"

namespace app {

ZnRxCommandValue edgeValue(const ZnDbFullSubentPath& path) {
  ZnRxCommandValue value = ZnRxCommandValue::object();
  ZnRxCommandValue& handles = value[L"path"] = ZnRxCommandValue::array();
  for (const ZnDbObjectId id : path.objectIds()) handles.append(handleText(id.handle()));
  value[L"index"] = path.subentId().index();
  return value;
}

ZnRxCommandValue pointValue(const ZnGePoint3d& point) {
  ZnRxCommandValue value = ZnRxCommandValue::array();
  for (const double coordinate : {point.x, point.y, point.z}) value.append(coordinate);
  return value;
}

bool runFor(ScriptArguments& arguments, const wchar_t* name, CommandCall& call) {
  std::string why;
  return runCommand(name, call, why) || arguments.fail(why);
}

void noteCreated(ScriptSession& session, const CommandCall& call) {
  for (const ZnRxCommandValue& handle : call.result().at(L"created").items()) {
    ZnDbObjectId id;
    if (session.database().getZnDbObjectId(id, false, handle.asString().asZnDbHandle()) == Quorl::eOk)
      session.noteMade(id);
  }
}

} // namespace app
