// quorl audit: whether a drawing is sound.
#include <memory>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/commands/command.h"
#include "app/commands/notes.h"
#include "app/drawing.h"
#include "app/output_batch.h"
#include "app/progress.h"
#include "quorl/file/drawing_audit.h"

namespace app {

namespace {

struct AuditOptions {
  std::string input, output;
  bool fix = false;
};

bool writeMended(const Drawing& drawing, const std::string& target, Failure& failure) {
  OutputBatch outputs;
  return drawing.write(outputs.fileFor(target), target, failure) && outputs.commit(failure);
}

// Whether the drawing is sound, and was written where it was to be.
bool auditOne(const AuditOptions& options, Console& console, Failure& failure) {
  if (!isOwnDrawing(options.input, failure)) return false;
  if (!options.output.empty() && !isOwnDrawing(options.output, failure)) return false;
  Progress progress(options.input, console.isQuiet());
  progress.stage("reading");
  Drawing drawing;
  if (!drawing.open(options.input, {}, failure)) {
    console.note(
        fmt::format("{} can't be opened; \"quorl recover\" saves what is whole in it", options.input));
    return false;
  }
  progress.stage("looking it over");
  const std::vector<ZnAuditFinding> findings = zndbAuditDrawing(drawing.database(), options.fix);
  for (const ZnAuditFinding& finding : findings) console.finding(options.input + ": " + finding.text());
  std::vector<ZnAuditFinding> left;
  if (options.fix && !findings.empty()) left = zndbAuditDrawing(drawing.database(), false);
  const std::string target = options.output.empty() ? options.input : options.output;
  const bool isToWrite = options.fix && (!findings.empty() || !options.output.empty());
  if (isToWrite && !writeMended(drawing, target, failure)) return false;
  if (findings.empty())
    console.note(options.input + ": nothing found");
  else if (!options.fix)
    return failure.set(options.input, 0, counted(findings.size(), "finding"), "none; --fix mends them");
  else if (!left.empty())
    return failure.set(
        target, 0, fmt::format("{} left, {}", counted(left.size(), "finding"), left.front().text()), "none");
  else
    console.note(fmt::format("{}: {} mended", target, counted(findings.size(), "finding")));
  return true;
}

int audit(const AuditOptions& options, Console& console) {
  Failure failure;
  if (!options.output.empty() && !options.fix) {
    console.fault("--output: there is nothing to write without --fix");
    return kMisused;
  }
  if (auditOne(options, console, failure)) return kSuccess;
  console.fault(failure);
  return kFailed;
}

constexpr const char* kExamples = "Examples:\n"
                                  "  quorl audit plate.bdoc\n"
                                  "  quorl audit plate.bdoc --fix                # mended in place\n"
                                  "  quorl audit plate.bdoc --fix -o mended.bdoc\n"
                                  "\nEach finding is a line with the object's handle and class. The exit "
                                  "code is 1 while findings are left.\n"
                                  "A file that can't be opened at all is a case for \"quorl recover\".\n";

} // namespace

void addAuditCommand(CLI::App& program, Console& console, Action& action) {
  auto options = std::make_shared<AuditOptions>();
  CLI::App* command = program.add_subcommand("audit", "Look a drawing over for what is wrong in it");
  command->add_option("DRAWING", options->input, "Drawing: " + namesOfEndings(isOwn))->required();
  command->add_flag("--fix", options->fix, "Mend what is found and save the drawing");
  command->add_option("-o,--output", options->output, "Where to save it, if not in place");
  command->footer(kExamples);
  command->callback(
      [options, &console, &action] { action = [options, &console] { return audit(*options, console); }; });
}

} // namespace app
