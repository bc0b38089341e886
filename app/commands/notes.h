// What a user is told about a drawing that was read.
#pragma once

#include "app/console.h"
#include <string>

#include "app/drawing.h"

namespace app {

// How lengths were understood where the file left it open, what was wrong and could be read around, and how
// much was passed over.
void tellImport(const Drawing& drawing, const Console& console);

// Those that the drawing shows are read anew, where it shows any; what stays as it was is said.
void readExternals(Drawing& drawing, const Console& console);

// "1 finding", "2 findings".
std::string counted(size_t count, const char* what);

// False, with the failure filled in, for a file whose ending is none of our own formats.
bool isOwnDrawing(const std::string& path, Failure& failure);

} // namespace app
