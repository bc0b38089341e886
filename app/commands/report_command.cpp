// quorl report: what a drawing holds.
#include <memory>

#include <CLI/CLI.hpp>

#include "app/commands/command.h"
#include "app/commands/notes.h"
#include "app/drawing_report.h"
#include "app/formats.h"
#include "app/import_options.h"
#include "app/progress.h"

namespace app {

namespace {

struct ReportOptions {
  std::string input;
  bool asJson = false;
  ImportOptions import;
};

int report(const ReportOptions& options, Console& console) {
  console.setDataOnly(true);
  Failure failure;
  Drawing drawing;
  std::string missing;
  Json json;
  {
    Progress progress(options.input, console.isQuiet());
    progress.stage("reading");
    if (!drawing.open(options.input, options.import.readOptions(), failure)) {
      console.fault(failure);
      return kFailed;
    }
    readExternals(drawing, console);
    progress.stage("looking at its center objects");
    json = drawingReport(drawing, missing, progress);
  }
  tellImport(drawing, console);
  // The drawing is shown all the same.
  if (json["centers"].is_null()) console.fault("center objects are not listed: " + missing);
  console.data(options.asJson ? jsonText(json) : reportText(json));
  return kSuccess;
}

constexpr const char* kExamples = "Examples:\n"
                                  "  quorl report plate.bdoc\n"
                                  "  quorl report plate.svg            # also says what was passed over\n"
                                  "  quorl report plate.bdoc --json > plate.json\n";

} // namespace

void addReportCommand(CLI::App& program, Console& console, Action& action) {
  auto options = std::make_shared<ReportOptions>();
  CLI::App* command =
      program.add_subcommand("report", "List a drawing's entities by class and its center objects");
  command->add_option("DRAWING", options->input, "Drawing: " + namesOfEndings(isReadable))->required();
  command->add_flag("--json", options->asJson, "As JSON");
  addImportOptions(*command, options->import);
  command->footer(kExamples);
  command->callback(
      [options, &console, &action] { action = [options, &console] { return report(*options, console); }; });
}

} // namespace app
