#include "app/script/script_runner.h"

#include <optional>

#include <fmt/format.h>

#include "app/evaluation.h"
#include "app/script/script_command.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/core/working_globals.h"

namespace app {

namespace {

// What the line made gets the name that it gives.
bool giveName(const ScriptLine& line, ScriptSession& session, ScriptArguments& arguments) {
  const std::vector<ZnDbObjectId> made = session.takeMade();
  if (line.name.empty()) return true;
  if (made.size() != 1)
    return arguments.fail(fmt::format("the line makes {} entities", made.size()), "one for AS to name");
  session.setName(line.name, made.front());
  return true;
}

bool runLine(const ScriptCommand& command, const ScriptLine& line, ScriptSession& session,
             ScriptArguments& arguments) {
  ZnDbDatabase& database = session.database();
  if (command.isHistory) {
    if (!line.name.empty()) return arguments.fail("the line makes nothing that AS could name");
    return command.run(session, arguments);
  }
  ZnDbWorkingGlobals work;
  work.globals.isLongTransactionActive = session.isBlockEdited();
  database.undoRecorder().startStep(ZnString::fromUtf8(line.command));
  ZnDbTransaction transaction(database);
  if (!command.run(session, arguments) || !giveName(line, session, arguments)) return false;
  for (const std::string& fault : evaluate(database)) session.console().note(fault);
  return arguments.check(transaction.end());
}

} // namespace

bool runScript(const std::vector<ScriptLine>& lines, const std::string& file, ScriptSession& session,
               Failure& failure) {
  for (const ScriptLine& line : lines) {
    const ScriptCommand* command = findScriptCommand(line.command);
    if (!command)
      return failure.set(file, line.number, line.command + " is no command",
                         "one of those that \"quorl run --help\" lists");
    ScriptArguments arguments(line, session);
    if (!runLine(*command, line, session, arguments))
      return failure.set(file, line.number, line.command + ": " + arguments.what(), arguments.expected());
  }
  if (session.isBlockEdited())
    return failure.set(file, lines.back().number, "the block is still being edited", "BLOCKEDIT END");
  return true;
}

} // namespace app
