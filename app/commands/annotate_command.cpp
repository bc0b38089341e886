// quorl annotate: center marks for every circle of a drawing.
#include <algorithm>
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
#include "app/same_file.h"
#include "app/variable_setting.h"
#include "exchange/annotate.h"

namespace fs = std::filesystem;

namespace app {

namespace {

constexpr const wchar_t* kCommand = L"TORVI.ANNOTATE";

// How far holes of an imported drawing may be moved to make a ring or row exact, in percent of their radius:
// as far as the reader lets a curve depart from the circle that it takes it for.
constexpr double kAlignImported = 2.0;

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
    std::string why;
    if (!setVariable(setting.substr(0, equals), setting.substr(equals + 1), why))
      return failure.set("--set", 0, setting + ": " + why);
  }
  return true;
}

std::vector<ZnDbObjectId> createdMarks(const Drawing& drawing, const exchange::AnnotateOutcome& outcome) {
  std::vector<ZnDbObjectId> marks;
  for (const std::string& handle : outcome.created) {
    ZnDbObjectId id;
    const ZnDbHandle number = ZnString::fromUtf8(handle).asZnDbHandle();
    if (drawing.database().getZnDbObjectId(id, false, number) == Quorl::eOk) marks.push_back(id);
  }
  return marks;
}

bool writeOutputs(const Drawing& drawing, const Job& job, const std::vector<ZnDbObjectId>& marks,
                  OutputBatch& outputs, Failure& failure) {
  for (const std::string& target : job.outputs) {
    ZnAtomicFile& file = outputs.fileFor(target);
    const bool ontoSource = drawing.import() && formatOf(target) == Format::kSvg;
    const bool written = ontoSource ? drawing.writeOntoSource(marks, file, target, failure)
                                    : drawing.write(file, target, failure);
    if (!written) return false;
  }
  return true;
}

// Center objects that could not be made; the rest of the drawing is done all the same.
bool tellFailures(const Job& job, const exchange::AnnotateOutcome& outcome, const Console& console) {
  for (const exchange::AnnotateFailure& failed : outcome.failures)
    console.fault(
        Failure{job.input, 0, fmt::format("no {} on #{}: {}", failed.what, failed.edge, failed.why), ""});
  return outcome.failures.empty();
}

// What the command saw and left unmarked, beside what the reader left out.
void addPassedOver(const Job& job, const exchange::AnnotateOutcome& outcome, Json& report) {
  for (const exchange::PassedOverEdge& passed : outcome.passedOver)
    report["skipped"].push_back(
        {{"what", "arc"}, {"where", fmt::format("{}: #{}", job.input, passed.edge)}, {"why", passed.why}});
}

void addFinds(const exchange::AnnotateOutcome& outcome, Json& report) {
  report["patterns"] = toJson(outcome.patterns);
  report["holes"] = toJson(outcome.holes);
  report["slots"] = toJson(outcome.slots);
  report["strips"] = toJson(outcome.strips);
}

// How many of the finds got a line now.
size_t newLines(const std::vector<exchange::AnnotatedLine>& finds) {
  return static_cast<size_t>(
      std::count_if(finds.begin(), finds.end(),
                    [](const exchange::AnnotatedLine& find) { return find.isNew && find.handle; }));
}

std::string madeText(const exchange::AnnotateOutcome& outcome) {
  const size_t patterns = outcome.patterns.size();
  const size_t lines = newLines(outcome.slots) + newLines(outcome.strips);
  const size_t marks = outcome.created.size() - patterns - lines;
  return counted(marks, "center mark") +
         (patterns ? (lines ? ", " : " and ") + counted(patterns, "center mark pattern") : std::string()) +
         (lines ? " and " + counted(lines, "center line") : std::string());
}

// Holes of a drawing of our own are not moved unasked; that they could be is worth a word.
void tellInexact(const AnnotateOptions& options, const Job& job, const Drawing& drawing, int inexact,
                 const Console& console) {
  if (inexact == 0 || options.align || drawing.import()) return;
  console.note(fmt::format(
      "{}: {} not exact enough for a pattern; --align 2 would move the holes by up to 2 % of "
      "their radius",
      job.input,
      inexact == 1 ? "1 ring or row of holes is" : fmt::format("{} rings or rows of holes are", inexact)));
}

exchange::AnnotateWish wishOf(const AnnotateOptions& options, const Drawing& drawing) {
  exchange::AnnotateWish wish;
  wish.minRadius = options.minRadius;
  wish.maxRadius = options.maxRadius;
  wish.arcs = options.arcs;
  wish.patterns = !options.noPatterns;
  wish.centerLines = options.centerLines;
  wish.strips = options.strips;
  wish.align = options.align.value_or(drawing.import() ? kAlignImported : 0.0) / 100.0;
  return wish;
}

bool annotateOne(const AnnotateOptions& options, const Job& job, const Console& console, Json& report,
                 Failure& failure) {
  Drawing drawing;
  OutputBatch outputs;
  exchange::AnnotateOutcome outcome;
  {
    Progress progress(job.input, console.isQuiet());
    progress.stage("reading");
    interchange::ReadOptions reading = options.import.readOptions();
    reading.withoutAnnotation = true;
    if (!drawing.open(job.input, reading, failure) || !applySettings(options, failure)) return false;
    readExternals(drawing, console);
    progress.stage("marking centers");
    CommandCall call;
    call.onProgress = [&progress](size_t done, size_t total) { progress.update(done, total); };
    std::string why;
    if (!runCommand(kCommand, wishOf(options, drawing), call, outcome, why))
      return failure.set(job.input, 0, why);
    progress.stage("writing");
    if (!writeOutputs(drawing, job, createdMarks(drawing, outcome), outputs, failure)) return false;
    std::string missing;
    if (!options.report.empty()) {
      report = drawingReport(drawing, missing, progress);
      addPassedOver(job, outcome, report);
      addFinds(outcome, report);
    }
    if (!outputs.commit(failure)) return false;
  }
  tellImport(drawing, console);
  console.note(job.input + ": " + madeText(outcome));
  tellInexact(options, job, drawing, outcome.inexactPatterns, console);
  if (tellFailures(job, outcome, console)) return true;
  return failure.set(job.input, 0, "some center objects could not be made");
}

// ".pdf", which has no name before it.
bool isOnlyEnding(const std::string& output) {
  const fs::path name = fs::path(output).filename();
  return name.extension().empty() && name.string().starts_with(".");
}

// Where the results of an input go: an output that is nothing but an ending names the input's own name in the
// folder of outputs.
std::vector<std::string> outputsOf(const AnnotateOptions& options, const fs::path& input) {
  std::vector<std::string> outputs, endings;
  for (const std::string& output : options.outputs)
    (isOnlyEnding(output) ? endings : outputs).push_back(output);
  if (options.outDir.empty()) return outputs;
  // The drawing in which the marks live on, and the input's own format.
  if (endings.empty()) endings = {".bdoc", input.extension().string()};
  for (const std::string& ending : endings) {
    const std::string target = (fs::path(options.outDir) / input.stem()).string() + ending;
    if (std::find(outputs.begin(), outputs.end(), target) == outputs.end()) outputs.push_back(target);
  }
  return outputs;
}

bool planOutputs(const AnnotateOptions& options, Job& job, std::set<std::string>& taken, Failure& failure) {
  for (const std::string& output : options.outputs)
    if (!formatOf(output))
      return failure.set(output, 0, "can't be written by its ending", "one of " + listOfEndings(isAny));
  job.outputs = outputsOf(options, job.input);
  for (const std::string& target : job.outputs)
    if (std::error_code unreachable; !taken.insert(fs::weakly_canonical(target, unreachable).string()).second)
      return failure.set(target, 0, "two results would be written to it",
                         "each output once, and inputs with names "
                         "of their own");
  return true;
}

// What the options say together; false with the reason when it makes no sense.
bool checkOptions(const AnnotateOptions& options, Failure& failure) {
  const bool anyEnding = std::any_of(options.outputs.begin(), options.outputs.end(), isOnlyEnding);
  const bool allEnding = std::all_of(options.outputs.begin(), options.outputs.end(), isOnlyEnding);
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

// An SVG keeps all that it has when the marks go on top, so its user may ask for that by its name.
bool isMarkedInPlace(const AnnotateOptions& options, const std::string& output) {
  return options.inputs.size() == 1 && formatOf(output) == Format::kSvg &&
         isSameFile(options.inputs.front(), output) &&
         std::find(options.outputs.begin(), options.outputs.end(), output) != options.outputs.end();
}

// Nothing else is written over what is read.
bool checkOutputs(const AnnotateOptions& options, const Console& console, Failure& failure) {
  std::vector<std::string> named = options.outputs, written;
  std::erase_if(named, isOnlyEnding);
  if (!options.report.empty()) {
    named.push_back(options.report);
    written.push_back(options.report);
  }
  if (!areApart(named, failure)) return false;
  for (const std::string& input : options.inputs) {
    for (const std::string& output : outputsOf(options, input)) {
      if (isMarkedInPlace(options, output))
        console.note(output + ": the marks go into the input itself");
      else
        written.push_back(output);
    }
  }
  return sparesInputs(options.inputs, written, failure);
}

bool writeReport(const AnnotateOptions& options, const std::vector<Json>& reports, Failure& failure) {
  if (options.report.empty()) return true;
  const Json json = options.inputs.size() == 1 ? reports.front() : Json{{"drawings", reports}};
  OutputBatch outputs;
  return writeBytes(jsonText(json), outputs.fileFor(options.report), options.report, failure) &&
         outputs.commit(failure);
}

bool makeFolder(const std::string& folder, Failure& failure) {
  if (folder.empty()) return true;
  std::error_code error;
  fs::create_directories(folder, error);
  return !error || failure.set(folder, 0, "can't be made: " + error.message(), "a folder");
}

int annotate(const AnnotateOptions& options, const Console& console) {
  Failure failure;
  if (!checkOptions(options, failure) || !checkOutputs(options, console, failure)) {
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
    "  quorl annotate plate.svg -o plate.bdoc --center-lines --strips\n"
    "  quorl annotate plate.svg -o plate.bdoc --set CENTEREXE=3 --set CENTERLAYER=Axes\n"
    "\nAn SVG made from an SVG is the document itself with the marks on top; -o may name the input for "
    "that.\n"
    "No other output may be a file that is read.\n";

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
