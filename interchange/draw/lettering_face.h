// The one face in which all lettering is set.
#pragma once

#include "interchange/draw/stroke_target.h"

#include <cairo.h>

#include <string>

namespace interchange {

// Chooses the face and maps the user space so that the lettering starts at the origin with its font size set,
// x along the baseline. `place` maps the lettering's coordinates to the context's user space; the caller
// saves and restores the context. Sizes do not depend on the resolution.
void setUpLettering(cairo_t* cairo, const Lettering& lettering, const ZnGeMatrix2d& place);

// Width of a text by the face, in capital heights. The same at every size.
double widthOfText(const std::string& text);

} // namespace interchange
