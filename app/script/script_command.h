// The table of script commands.
#pragma once

#include <span>
#include <string>

#include "app/script/script_arguments.h"

namespace app {

struct ScriptCommand {
  const char* name;
  const char* usage; // the arguments
  // False with the arguments' failure set; what was changed until then is taken back by the caller.
  bool (*run)(ScriptSession& session, ScriptArguments& arguments);
  // Walks the undo history instead of adding to it.
  bool isHistory = false;
};

// One group a source.
std::span<const ScriptCommand> drawCommands();      // entities
std::span<const ScriptCommand> changeCommands();    // moving, copying, erasing
std::span<const ScriptCommand> structureCommands(); // layers, blocks, variables
std::span<const ScriptCommand> exchangeCommands();  // between drawings
std::span<const ScriptCommand> patternCommands();   // patterns of center marks
std::span<const ScriptCommand> centerCommands();    // center marks
std::span<const ScriptCommand> sessionCommands();   // history, listing, saving
std::span<const ScriptCommand> hostCommands();      // what the host is to modules

// By upper-case name; null when there is none.
const ScriptCommand* findScriptCommand(const std::string& name);
// Every command with its arguments, one a line.
std::string scriptCommandHelp();

} // namespace app
