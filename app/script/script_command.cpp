#include "app/script/script_command.h"

#include <fmt/format.h>

namespace app {

namespace {

constexpr std::span<const ScriptCommand> (*kGroups[])() = {
    drawCommands,   changeCommands,  structureCommands, exchangeCommands,
    centerCommands, patternCommands, sessionCommands,   hostCommands};

} // namespace

const ScriptCommand* findScriptCommand(const std::string& name) {
  for (const auto group : kGroups)
    for (const ScriptCommand& command : group())
      if (name == command.name) return &command;
  return nullptr;
}

std::string scriptCommandHelp() {
  std::string help;
  for (const auto group : kGroups)
    for (const ScriptCommand& command : group())
      help += fmt::format("  {:<13} {}\n", command.name, command.usage);
  return help;
}

} // namespace app
