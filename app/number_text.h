// Numbers and points for people to read.
#pragma once

#include <string>

#include "quorl/ge/point3d.h"

namespace app {

// At most six decimals, without trailing zeros.
std::string numberText(double value);
// "x,y", or "x,y,z" outside the plane z = 0.
std::string pointText(const ZnGePoint3d& point);

} // namespace app
