// quorl run: a script of drawing commands.
#include <memory>

#include <CLI/CLI.hpp>

#include "app/commands/command.h"
#include "app/commands/notes.h"
#include "app/drawing.h"
#include "app/formats.h"
#include "app/import_options.h"
#include "app/output_batch.h"
#include "app/progress.h"
#include "app/same_file.h"
#include "app/script/script_command.h"
#include "app/script/script_runner.h"
#include "quorl/file/disk_file.h"

namespace app {

namespace {

struct RunOptions {
  std::string script, drawing;
  std::vector<std::string> outputs;
  ImportOptions import;
};

bool readScript(const std::string& path, std::vector<ScriptLine>& lines, Failure& failure) {
  std::string text, fault;
  if (!zndbReadFile(path, text, fault)) return failure.set(path, 0, "can't be read: " + fault, "a script");
  return parseScript(text, path, lines, failure);
}

bool writeOutputs(const Drawing& drawing, const std::vector<std::string>& targets, OutputBatch& outputs,
                  Failure& failure) {
  for (const std::string& target : targets)
    if (!drawing.write(outputs.fileFor(target), target, failure)) return false;
  return true;
}

// A drawing of our own is written back whole, so that it may be worked on in place. Of another's file, the
// drawing holds a part only.
std::vector<std::string> inputsToSpare(const RunOptions& options) {
  std::vector<std::string> inputs = {options.script};
  const std::optional<Format> format = formatOf(options.drawing);
  if (format && !isOwn(*format)) inputs.push_back(options.drawing);
  return inputs;
}

bool execute(const RunOptions& options, Console& console, Failure& failure) {
  std::vector<ScriptLine> lines;
  const std::vector<std::string> read = inputsToSpare(options);
  if (!areApart(options.outputs, failure) || !sparesInputs(read, options.outputs, failure)) return false;
  if (!readScript(options.script, lines, failure)) return false;
  Drawing drawing;
  if (!options.drawing.empty() && !drawing.open(options.drawing, options.import.readOptions(), failure))
    return false;
  tellImport(drawing, console);
  readExternals(drawing, console);
  OutputBatch outputs;
  const ScriptSession* running = nullptr;
  ScriptSession session(
      drawing.database(), console,
      [&](ZnDbDatabase& written, const std::string& target, const auto& extra, Failure& why) {
        return sparesInputs(read, {target}, why) && sparesInputs(running->filesRead(), {target}, why) &&
               Drawing::write(written, outputs.fileFor(target), target, why, extra);
      });
  running = &session;
  Progress progress(options.script, console.isQuiet());
  progress.stage("running");
  return runScript(lines, options.script, session, failure) &&
         sparesInputs(session.filesRead(), options.outputs, failure) &&
         writeOutputs(drawing, options.outputs, outputs, failure) && outputs.commit(failure);
}

int run(const RunOptions& options, Console& console) {
  Failure failure;
  if (execute(options, console, failure)) return kSuccess;
  console.fault(failure);
  return kFailed;
}

constexpr const char* kExamples =
    "Examples:\n"
    "  quorl run make-plate.quorl -o plate.bdoc -o plate.pdf\n"
    "  quorl run move-a-hole.quorl plate.bdoc -o moved.bdoc\n"
    "  quorl run move-a-hole.quorl plate.bdoc -o plate.bdoc   # in place\n"
    "\nA script has one command a line; \"#\" begins a comment. Points are "
    "x,y; angles are in degrees. Entities are\n"
    "named by #handle, by a name that AS gave (CIRCLE 10,10 4 AS hole), or by "
    "a point, for the nearest edge;\nan edge that a viewport shows is view/name.\n"
    "A line that fails stops the script, and nothing is saved.\n\nCommands:\n";

} // namespace

void addRunCommand(CLI::App& program, Console& console, Action& action) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command = program.add_subcommand("run", "Run a script of drawing commands");
  command->add_option("SCRIPT", options->script, "Script")->required();
  command->add_option("DRAWING", options->drawing, "Drawing to work on; a new one without it");
  command->add_option("-o,--output", options->outputs, "File to write: " + namesOfEndings(isAny))
      ->take_all()
      ->allow_extra_args(false);
  addImportOptions(*command, options->import);
  command->footer(kExamples + scriptCommandHelp());
  command->callback(
      [options, &console, &action] { action = [options, &console] { return run(*options, console); }; });
}

} // namespace app
