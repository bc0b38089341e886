#include "app/commands/annotate_options.h"

#include <CLI/CLI.hpp>

#include "app/formats.h"
#include "app/number_range.h"

namespace app {

void defineAnnotateOptions(CLI::App& command, AnnotateOptions& options) {
  // Larger circles are beyond what a drawing in any unit holds.
  constexpr double kLargestRadius = 1e12, kFullTurn = 360.0, kLargestAlign = 10.0;
  command.add_option("INPUT", options.inputs, "Drawings: " + namesOfEndings(isReadable))->required();
  command
      .add_option("-o,--output", options.outputs,
                  "File to write: " + namesOfEndings(isAny) + "; may be repeated")
      ->allow_extra_args(false);
  command.add_option("--out-dir", options.outDir,
                     "Folder for the results of several inputs, under their names");
  command.add_option("--report", options.report, "File for a JSON report");
  command.add_option("--set", options.settings, "System variable, as NAME=VALUE; may be repeated")
      ->allow_extra_args(false);
  command.add_option("--min-radius", options.minRadius, "Pass over smaller circles, in drawing units")
      ->check(numberFrom(0.0, kLargestRadius));
  command.add_option("--max-radius", options.maxRadius, "Pass over larger circles, in drawing units")
      ->check(numberFrom(0.0, kLargestRadius));
  command
      .add_option("--arcs", options.arcs, "Least span of an arc that gets a mark, in degrees; 180 without it")
      ->check(numberFrom(0.0, kFullTurn));
  command.add_flag("--no-patterns", options.noPatterns,
                   "Give every hole a mark of its own, also in rings and rows");
  command.add_flag("--center-lines", options.centerLines,
                   "Give every slot a center line, and a mark at each of its round ends");
  command.add_flag("--strips", options.strips,
                   "Give the long sides of rectangles with nothing in them, more than three times as long as "
                   "wide, a center line");
  command
      .add_option(
          "--align", options.align,
          "How far holes may be moved onto the ring or row that they are part of, in percent of their "
          "radius; 2 for .svg, whose numbers are rounded, 0 for other drawings")
      ->check(numberFrom(0.0, kLargestAlign));
  addImportOptions(command, options.import);
}

} // namespace app
