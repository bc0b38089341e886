// quorl convert: a drawing from one format into another.
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

namespace app {

namespace {

struct ConvertOptions {
  std::string input, output;
  ImportOptions import;
};

int convert(const ConvertOptions& options, const Console& console) {
  Failure failure;
  if (!sparesInputs({options.input}, {options.output}, failure)) {
    console.fault(failure);
    return kMisused;
  }
  Drawing drawing;
  OutputBatch outputs;
  Progress progress(options.input, console.isQuiet());
  progress.stage("reading");
  bool done = drawing.open(options.input, options.import.readOptions(), failure);
  if (done) {
    readExternals(drawing, console);
    progress.stage("writing");
    done = drawing.write(outputs.fileFor(options.output), options.output, failure) && outputs.commit(failure);
  }
  if (!done) {
    console.fault(failure);
    return kFailed;
  }
  tellImport(drawing, console);
  return kSuccess;
}

constexpr const char* kExamples = "Examples:\n"
                                  "  quorl convert plate.svg plate.bdoc      # a drawing out of a picture\n"
                                  "  quorl convert plate.bdoc plate.tdoc     # to read or compare as text\n"
                                  "  quorl convert plate.tdoc plate.pdf      # to print\n"
                                  "  quorl convert --unit in board.svg board.png\n";

} // namespace

void addConvertCommand(CLI::App& program, Console& console, Action& action) {
  auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = program.add_subcommand("convert", "Write a drawing in another format");
  command->add_option("INPUT", options->input, "Drawing: " + namesOfEndings(isReadable))->required();
  command->add_option("OUTPUT", options->output, "File: " + namesOfEndings(isAny))->required();
  addImportOptions(*command, options->import);
  command->footer(kExamples);
  command->callback(
      [options, &console, &action] { action = [options, &console] { return convert(*options, console); }; });
}

} // namespace app
