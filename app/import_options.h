// The options by which the user says how a drawing without sizes is to be read.
#pragma once

#include <string>

#include "interchange/svg_in/read_options.h"

namespace CLI {
class App;
}

namespace app {

// As the user gave them, with nothing where not.
struct ImportOptions {
  std::string unit;
  double dpi = 0.0;
  double fitTolerance = 0.0;

  interchange::ReadOptions readOptions() const;
};

// Adds --unit, --dpi and --fit-tolerance to the command; the options must outlive the parsing.
void addImportOptions(CLI::App& command, ImportOptions& options);

} // namespace app
