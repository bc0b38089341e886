// Brings a scene, or the SVG file that it is read from, into a drawing.
#pragma once

#include "interchange/import/import_report.h"
#include "interchange/svg_in/read_options.h"
#include "interchange/svg_in/scene.h"

#include "quorl/base/failure.h"

#include <string>

class ZnDbDatabase;

namespace interchange {

// Adds layers, blocks and entities to the current space, in millimetres; what stands in the drawing stays.
// What an entity cannot hold is added to the report's skipped list. False when the drawing has no tables or
// space to add to; the report's page map is left to who knows the source.
bool importScene(const Scene& scene, ZnDbDatabase& database, ImportReport& report);

// Reads and imports. False with the reason in `error` for a file that is refused; the drawing is unchanged
// then.
bool importSvgFile(const std::string& path, const ReadOptions& options, ZnDbDatabase& database,
                   ImportReport& report, Quorl::Failure& error);

} // namespace interchange
