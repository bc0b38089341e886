// quorl annotate: center marks for every circle of a drawing.
#include <filesystem>
#include <memory>
#include <set>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/center_module.h"
#include "app/commands/annotate_options.h"
#include "app/commands/command.h"
#include "app/commands/notes.h"
#include "app/drawing_report.h"
#include "app/output_batch.h"
#include "app/progress.h"
#include "quorl/rx/variables_dictionary.h"

namespace fs = std::filesystem;

namespace app {

namespace {

constexpr const wchar_t* kCommand = L"TORVI.ANNOTATE";

// One drawing on its way through the command.
struct Job {
  std::string input;
  std::vector<std::string> outputs;
};

// "NAME=VALUE" of every --set, on the drawing that is open now.
bool applySettings(const AnnotateOptions& options, Failure& failure) {
  for (const std::string& setting : options.settings) {
    const size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0)
      return failure.set("--set", 0, "\"" + setting + "\"", "NAME=VALUE");
    ZnString error;
    const Quorl::ErrorStatus status =
        ZnRxVariablesDictionary::get()->set(ZnString::fromUtf8(setting.substr(0, equals)).view(),
                                            ZnString::fromUtf8(setting.substr(equals + 1)), error);
    if (status != Quorl::eOk)
      return failure.set("--set", 0, setting + ": " + error.trimRight(L". \r\n").utf8());
  }
  return true;
}

std::vector<ZnDbObjectId> createdMarks(const Drawing& drawing, const ZnRxCommandValue& result) {
  std::vector<ZnDbObjectId> marks;
  for (const ZnRxCommandValue& handle : result.at(L"created").items()) {
    ZnDbObjectId id;
    if (drawing.database().getZnDbObjectId(id, false, handle.asString().asZnDbHandle()) == Quorl::eOk)
      marks.push_back(id);
  }
  return marks;
}

bool writeOutputs(const Drawing& drawing, const Job& job, const std::vector<ZnDbObjectId>& marks,
                  OutputBatch& outputs, Failure& failure) {
  for (const std::string& target : job.outputs) {
    const std::string file = outputs.pendingFor(target);
    const bool ontoSource = drawing.import() && formatOf(target) == Format::kSvg;
    const bool written = ontoSource ? drawing.writeOntoSource(marks, file, target, failure)
                                    : drawing.write(file, target, failure);
    if (!written) return false;
  }
  return true;
}

// Marks that could not be made; the rest of the drawing is done all the same.
bool tellFailures(const Job& job, const ZnRxCommandValue& result, const Console& console) {
  for (const ZnRxCommandValue& failed : result.at(L"failures").items())
    console.fault(Failure{job.input, 0,
                          fmt::format("no center mark on #{}: {}", failed.at(L"edge").asString().utf8(),
                                      failed.at(L"why").asString().utf8()),
                          ""});
  return result.at(L"failures").items().empty();
}

bool annotateOne(const AnnotateOptions& options, const Job& job, const Console& console, Json& report,
                 Failure& failure) {
  Drawing drawing;
  OutputBatch outputs;
  CommandCall call;
  call.arguments()[L"arcs"] = options.arcs;
  if (options.minRadius) call.arguments()[L"minRadius"] = *options.minRadius;
  if (options.maxRadius) call.arguments()[L"maxRadius"] = *options.maxRadius;
  {
    Progress progress(job.input, console.isQuiet());
    progress.stage("reading");
    if (!drawing.open(job.input, options.import.readOptions(), failure) || !applySettings(options, failure))
      return false;
    progress.stage("marking centers");
    call.onProgress = [&progress](size_t done, size_t total) { progress.update(done, total); };
    std::string why;
    if (!runCommand(kCommand, call, why)) return failure.set(job.input, 0, why);
    progress.stage("writing");
    if (!writeOutputs(drawing, job, createdMarks(drawing, call.result()), outputs, failure)) return false;
    std::string missing;
    if (!options.report.empty()) report = drawingReport(drawing, missing, progress);
    if (!outputs.commit(failure)) return false;
  }
  tellImport(drawing, console);
  console.note(fmt::format("{}: {} center marks", job.input, call.result().at(L"created").items().size()));
  if (tellFailures(job, call.result(), console)) return true;
  return failure.set(job.input, 0, "some center marks could not be made");
}

// Where the results of an input go: an output that is nothing but an ending names the input's own name in the
// folder of outputs.
bool planOutputs(const AnnotateOptions& options, Job& job, std::set<std::string>& taken, Failure& failure) {
  const fs::path input(job.input);
  std::vector<std::string> endings;
  for (const std::string& output : options.outputs) {
    if (!formatOf(output))
      return failure.set(output, 0, "can't be written by its ending", "one of " + allEndings());
    const bool isEnding = fs::path(output).extension().empty();
    if (!isEnding) job.outputs.push_back(output);
    if (isEnding) endings.push_back(output);
  }
  if (!options.outDir.empty()) {
    // The drawing in which the marks live on, and the input's own format.
    if (endings.empty()) endings = {".bdoc", input.extension().string()};
    for (const std::string& ending : endings) {
      const std::string target = (fs::path(options.outDir) / input.stem()).string() + ending;
      if (std::find(job.outputs.begin(), job.outputs.end(), target) == job.outputs.end())
        job.outputs.push_back(target);
    }
  }
  for (const std::string& target : job.outputs)
    if (!taken.insert(fs::weakly_canonical(target).string()).second)
      return failure.set(target, 0, "two inputs would be written to it", "inputs with names of their own");
  return true;
}

// What the options say together; false with the reason when it makes no sense.
bool checkOptions(const AnnotateOptions& options, Failure& failure) {
  const auto isEnding = [](const std::string& output) { return fs::path(output).extension().empty(); };
  const bool anyEnding = std::any_of(options.outputs.begin(), options.outputs.end(), isEnding);
  const bool allEnding = std::all_of(options.outputs.begin(), options.outputs.end(), isEnding);
  if (options.outputs.empty() && options.outDir.empty() && options.report.empty())
    return failure.set("quorl annotate", 0, "nothing is to be written", "--output, --out-dir or --report");
  if (options.inputs.size() > 1 && !allEnding)
    return failure.set("quorl annotate", 0, "one output for several inputs", "--out-dir");
  if (anyEnding && options.outDir.empty())
    return failure.set("quorl annotate", 0, "an output that is only an ending", "--out-dir with it");
  if (options.minRadius && options.maxRadius && *options.minRadius > *options.maxRadius)
    return failure.set("--min-radius", 0, "is above --max-radius", "a smaller radius");
  return true;
}

bool writeReport(const AnnotateOptions& options, const std::vector<Json>& reports, Failure& failure) {
  if (options.report.empty()) return true;
  const Json json = options.inputs.size() == 1 ? reports.front() : Json{{"drawings", reports}};
  OutputBatch outputs;
  const std::string file = outputs.pendingFor(options.report);
  std::FILE* stream = std::fopen(file.c_str(), "wb");
  const std::string text = jsonText(json);
  bool written = stream && std::fwrite(text.data(), 1, text.size(), stream) == text.size();
  if (stream) written = std::fclose(stream) == 0 && written;
  return written ? outputs.commit(failure) : failure.set(options.report, 0, "can't be written");
}

bool makeFolder(const std::string& folder, Failure& failure) {
  if (folder.empty()) return true;
  std::error_code error;
  fs::create_directories(folder, error);
  return !error || failure.set(folder, 0, "can't be made: " + error.message(), "a folder");
}

int annotate(const AnnotateOptions& options, const Console& console) {
  Failure failure;
  if (!checkOptions(options, failure)) {
    console.fault(failure);
    return kMisused;
  }
  // Without the command each input would fail alike.
  if (!hasCommand(kCommand)) failure.set("quorl annotate", 0, missingCommand(kCommand));
  if (!failure.what.empty() || !makeFolder(options.outDir, failure)) {
    console.fault(failure);
    return kFailed;
  }
  int exitCode = kSuccess;
  std::set<std::string> taken;
  std::vector<Json> reports;
  for (const std::string& input : options.inputs) {
    Job job{input, {}};
    Json report = Json::object();
    const bool done =
        planOutputs(options, job, taken, failure) && annotateOne(options, job, console, report, failure);
    if (!done) {
      console.fault(failure);
      exitCode = kFailed;
    }
    if (options.inputs.size() > 1) {
      report["input"] = input;
      report["error"] = done ? Json(nullptr) : Json(failure.text());
    }
    reports.push_back(std::move(report));
  }
  // A single input that failed has no report to write.
  if (options.inputs.size() == 1 && exitCode != kSuccess && reports.front().empty()) return exitCode;
  if (!writeReport(options, reports, failure)) {
    console.fault(failure);
    exitCode = kFailed;
  }
  return exitCode;
}

constexpr const char* kExamples =
    "Examples:\n"
    "  quorl annotate plate.svg -o plate.bdoc -o marked.svg -o plate.png --report plate.json\n"
    "  quorl annotate *.svg --out-dir marked             # each as .bdoc and .svg\n"
    "  quorl annotate *.svg --out-dir marked -o .pdf     # each as .pdf\n"
    "  quorl annotate plate.svg -o plate.bdoc --min-radius 2 --arcs 90\n"
    "  quorl annotate plate.svg -o plate.bdoc --set CENTEREXE=3 --set CENTERLAYER=Axes\n"
    "\nAn SVG made from an SVG is the document itself with the marks on top.\n";

} // namespace

void addAnnotateCommand(CLI::App& program, Console& console, Action& action) {
  auto options = std::make_shared<AnnotateOptions>();
  CLI::App* command = program.add_subcommand("annotate", "Put a center mark on every circle");
  defineAnnotateOptions(*command, *options);
  command->footer(kExamples);
  command->callback(
      [options, &console, &action] { action = [options, &console] { return annotate(*options, console); }; });
}

} // namespace app
