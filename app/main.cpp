// The program quorl.
#include <exception>
#include <new>
#include <sstream>

#include <CLI/CLI.hpp>

#include "app/center_module.h"
#include "app/commands/command.h"
#include "app/interruption.h"
#include "quorl/rx/print.h"

namespace {

constexpr const char* kDescription = "Drawings with center marks that follow their circles.\n";
constexpr const char* kFooter = "\"quorl COMMAND --help\" shows the options of a command, with examples.\n";

// The library tells just that a command is missing when it is misspelled.
std::string misuseText(const CLI::App* program, const CLI::Error& error) {
  const std::vector<std::string> unknown = program->remaining();
  std::string what = error.what();
  if (!unknown.empty() && program->get_subcommands().empty())
    what = "\"" + unknown.front() +
           "\" is no command, expected annotate, report, convert, run, audit or recover";
  return "quorl: " + what + "\n\"quorl --help\" tells more\n";
}

} // namespace

int main(int argc, char** argv) {
  app::leaveNothingOnSignals();
  app::endWithoutMemory();
  app::Console console;
  app::Action action;
  bool quiet = false;
  CLI::App program(kDescription, "quorl");
  program.set_version_flag("--version", std::string("quorl ") + QUORL_VERSION);
  program.add_flag("--quiet", quiet, "No notes and no progress bar");
  program.require_subcommand(1);
  program.fallthrough();
  program.footer(kFooter);
  program.failure_message(misuseText);
  app::addAnnotateCommand(program, console, action);
  app::addReportCommand(program, console, action);
  app::addConvertCommand(program, console, action);
  app::addRunCommand(program, console, action);
  app::addAuditCommand(program, console, action);
  app::addRecoverCommand(program, console, action);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // Help and version come this way too, with success.
    std::ostringstream help;
    if (program.exit(error, help) != 0) return app::kMisused;
    console.data(help.str());
    return console.isDataThrough() ? app::kSuccess : app::kFailed;
  }
  console.setQuiet(quiet);
  // What modules print is talk for the user, not data.
  znutSetPrintSink(
      [&console](const ZnString& text) { console.note(ZnString(text).trimRight(L"\r\n").utf8()); });
  if (!app::loadCenterModule()) {
    console.fault("quorl: out of memory");
    return app::kFailed;
  }
  int exitCode = app::kFailed;
  try {
    exitCode = action();
  } catch (const std::bad_alloc&) {
    console.fault("quorl: out of memory");
  } catch (const std::exception& error) {
    console.fault(std::string("quorl: ") + error.what());
  }
  app::endWithoutMemoryAs(console.isDataThrough() ? exitCode : app::kFailed);
  app::unloadCenterModule();
  znutSetPrintSink({});
  return console.isDataThrough() ? exitCode : app::kFailed;
}
