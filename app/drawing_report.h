// What a drawing holds, for programs and for people.
#pragma once

#include <string>

#include "app/drawing.h"
#include "app/json.h"
#include "app/progress.h"

namespace app {

// "units", "entities" (class to count, in all spaces), "skipped" and "circles" of what was imported, and
// "centers". Center objects are known to their module alone: without it "centers" is null and `missing` says
// in one sentence why.
Json drawingReport(const Drawing& drawing, std::string& missing, Progress& progress);

// The same as lines to read.
std::string reportText(const Json& report);

} // namespace app
