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
  ImportOptions import;
};

// The options must outlive the parsing.
void defineAnnotateOptions(CLI::App& command, AnnotateOptions& options);

} // namespace app
