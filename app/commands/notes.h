// What a user is told about a drawing that was read.
#pragma once

#include "app/console.h"
#include "app/drawing.h"

namespace app {

// How lengths were understood where the file left it open, what was wrong and could be read around, and how
// much was passed over.
void tellImport(const Drawing& drawing, const Console& console);

} // namespace app
