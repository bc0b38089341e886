// What script commands share that hand on to a module's command.
#pragma once

#include "app/center_module.h"
#include "app/script/script_command.h"

namespace app {

// As modules' commands take edges: "path", the handles, and "index".
ZnRxCommandValue edgeValue(const ZnDbFullSubentPath& path);
ZnRxCommandValue pointValue(const ZnGePoint3d& point);

// Runs the command; what it says against it is the line's failure.
bool runFor(ScriptArguments& arguments, const wchar_t* name, CommandCall& call);

// Notes the handles of the result "created" as made by the line.
void noteCreated(ScriptSession& session, const CommandCall& call);

} // namespace app
