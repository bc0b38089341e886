// What the rest of the module has to know of center mark patterns; see core/kind.h.
#pragma once

#include "torvi/core/kind.h"

namespace torvi {
extern const Kind kCenterMarkPatternKind;
}
