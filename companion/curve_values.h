// Points and shapes as values for a command's caller.
#pragma once

#include "exchange/drawing_values.h"
#include "torvi/host/association.h"

namespace companion {

exchange::Point pointValue(const ZnGePoint3d& point);
ZnGePoint3d pointOf(const exchange::Point& value);

// A line or arc seen through the transform.
exchange::Shape shapeOf(const ZnDbEntity& entity, const ZnGeMatrix3d& toWorld);

} // namespace companion
