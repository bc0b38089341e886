// What script commands share that hand on to a module's command.
#pragma once

#include "app/center_module.h"
#include "app/script/script_command.h"
#include "exchange/center_commands.h"

namespace app {

std::string handleOf(ZnDbObjectId object);
exchange::Edge edgeValue(const ZnDbFullSubentPath& path);
exchange::Point pointValue(const ZnGePoint3d& point);

// Runs the command; what it says against it is the line's failure.
template<class Wish, class Outcome>
bool runFor(ScriptArguments& arguments, const wchar_t* name, const Wish& wish, Outcome& outcome) {
  CommandCall call;
  std::string why;
  return runCommand(name, wish, call, outcome, why) || arguments.fail(why);
}

// Notes the objects of these handles as made by the line.
void noteCreated(ScriptSession& session, const std::vector<std::string>& handles);

} // namespace app
