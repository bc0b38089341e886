// What numbers a drawing can hold.
#pragma once

#include "quorl/ge/matrix2d.h"

namespace interchange {

// Neither infinite nor undefined nor beyond what a drawing can mean.
bool isUsable(const ZnGePoint2d& point);
bool isUsable(const ZnGeVector2d& vector);

bool isFinite(const ZnGeMatrix2d& map);

} // namespace interchange
