#include "app/import_options.h"

#include <CLI/CLI.hpp>

#include "app/number_range.h"

namespace app {

namespace {

struct UnitRow {
  const char* name;
  interchange::LengthUnit unit;
};

constexpr UnitRow kUnits[] = {
    {"px", interchange::LengthUnit::Pixel},      {"mm", interchange::LengthUnit::Millimetre},
    {"cm", interchange::LengthUnit::Centimetre}, {"in", interchange::LengthUnit::Inch},
    {"pt", interchange::LengthUnit::Point},      {"pc", interchange::LengthUnit::Pica},
};

std::vector<std::string> unitNames() {
  std::vector<std::string> names;
  for (const UnitRow& row : kUnits) names.emplace_back(row.name);
  return names;
}

} // namespace

interchange::ReadOptions ImportOptions::readOptions() const {
  interchange::ReadOptions options;
  for (const UnitRow& row : kUnits)
    if (unit == row.name) options.unit = row.unit;
  if (dpi > 0.0) options.dpi = dpi;
  if (fitTolerance > 0.0) options.fit.circleTolerance = fitTolerance;
  return options;
}

void addImportOptions(CLI::App& command, ImportOptions& options) {
  constexpr double kLeastDpi = 1.0, kLargestDpi = 100000.0;
  constexpr double kLeastFit = 0.000001, kLargestFit = 0.2;
  command.add_option("--unit", options.unit, "Meaning of a number in an SVG without physical size")
      ->check(CLI::IsMember(unitNames()));
  command
      .add_option("--dpi", options.dpi, "Pixels to the inch in an SVG; 96 or the file's own hint without it")
      ->check(numberFrom(kLeastDpi, kLargestDpi));
  command
      .add_option("--fit-tolerance", options.fitTolerance,
                  "How far a drawn circle may leave the true one, as a part of its radius; 0.02 without it")
      ->check(numberFrom(kLeastFit, kLargestFit));
}

} // namespace app
