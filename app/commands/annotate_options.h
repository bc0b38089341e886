// The options of quorl annotate.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/import_options.h"

namespace app {

struct AnnotateOptions {
  std::vector<std::string> inputs, outputs, settings;
  std::string outDir, report;
  std::optional<double> minRadius, maxRadius; // drawing units
  double arcs = 180.0;                        // least span in degrees
  bool noPatterns = false;
  bool centerLines = false, strips = false;
  std::optional<double> align; // percent of a hole's radius; by kind of input without it
  ImportOptions import;
};

// The options must outlive the parsing.
void defineAnnotateOptions(CLI::App& command, AnnotateOptions& options);

} // namespace app
