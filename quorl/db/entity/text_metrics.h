// Nominal widths of texts: a drawing holds no font, yet extents must be the same on every machine.
#pragma once

#include <array>

#include "quorl/base/string.h"
#include "quorl/db/entity/text.h"
#include "quorl/ge/point3d.h"

// Width in drawing units of a line of text of that capital height.
double zndbTextWidth(std::wstring_view text, double height, double widthFactor);
// The corners of the box around a line of text, counterclockwise from the left below; up is normal cross
// direction, both unit vectors. The box reaches below the baseline as far as letters do.
std::array<ZnGePoint3d, 4> zndbTextCorners(const ZnGePoint3d& position, const ZnGeVector3d& normal,
                                           const ZnGeVector3d& direction, double height, double widthFactor,
                                           std::wstring_view text, ZnDb::TextAlign align);
