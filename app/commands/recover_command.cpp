// quorl recover: what is whole in a damaged drawing.
#include <memory>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/commands/command.h"
#include "app/commands/notes.h"
#include "app/drawing.h"
#include "app/output_batch.h"
#include "app/progress.h"
#include "app/same_file.h"

namespace app {

namespace {

struct RecoverOptions {
  std::string input, output;
};

bool recoverOne(const RecoverOptions& options, Console& console, Failure& failure) {
  if (!isOwnDrawing(options.input, failure) || !isOwnDrawing(options.output, failure)) return false;
  Drawing drawing;
  OutputBatch outputs;
  std::vector<Failure> findings;
  Progress progress(options.input, console.isQuiet());
  progress.stage("recovering");
  const bool recovered = drawing.recover(options.input, findings, failure);
  for (const Failure& finding : findings) console.finding(finding.text());
  if (!recovered || !drawing.write(outputs.fileFor(options.output), options.output, failure) ||
      !outputs.commit(failure))
    return false;
  console.note(fmt::format("{}: {} objects, {}", options.output, drawing.database().objectCount(),
                           findings.empty() ? "nothing was lost" : counted(findings.size(), "finding")));
  return true;
}

int recover(const RecoverOptions& options, Console& console) {
  Failure failure;
  // The damaged file may yet be of use to somebody.
  if (!sparesInputs({options.input}, {options.output}, failure)) {
    console.fault(failure);
    return kMisused;
  }
  if (recoverOne(options, console, failure)) return kSuccess;
  console.fault(failure);
  return kFailed;
}

constexpr const char* kExamples =
    "Examples:\n"
    "  quorl recover plate.bdoc -o saved.bdoc\n"
    "\nRecords that are whole are kept as they are. What could not be read is listed with its place: section "
    "and\n"
    "byte, or line, and the handle where it is known. The result has passed the audit.\n";

} // namespace

void addRecoverCommand(CLI::App& program, Console& console, Action& action) {
  auto options = std::make_shared<RecoverOptions>();
  CLI::App* command = program.add_subcommand("recover", "Save what is whole in a damaged drawing");
  command->add_option("DRAWING", options->input, "Damaged drawing: " + namesOfEndings(isOwn))->required();
  command->add_option("-o,--output", options->output, "Drawing to write: " + namesOfEndings(isOwn))
      ->required();
  command->footer(kExamples);
  command->callback(
      [options, &console, &action] { action = [options, &console] { return recover(*options, console); }; });
}

} // namespace app
