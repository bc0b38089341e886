// What the program's sub-commands share.
#pragma once

#include <functional>

#include "app/console.h"

namespace CLI {
class App;
}

namespace app {

// Exit codes of the program.
constexpr int kSuccess = 0;
constexpr int kFailed = 1;  // at least one thing that was asked for was not done
constexpr int kMisused = 2; // the command line makes no sense

// The sub-command that the command line names, ready to run; empty before parsing.
using Action = std::function<int()>;

// Each adds its sub-command, whose options live as long as the program; when the command line names it, the
// action becomes it.
void addAnnotateCommand(CLI::App& program, Console& console, Action& action);
void addReportCommand(CLI::App& program, Console& console, Action& action);
void addConvertCommand(CLI::App& program, Console& console, Action& action);
void addAuditCommand(CLI::App& program, Console& console, Action& action);
void addRecoverCommand(CLI::App& program, Console& console, Action& action);
void addRunCommand(CLI::App& program, Console& console, Action& action);

} // namespace app
