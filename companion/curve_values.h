// Points and shapes as values for a command's caller.
#pragma once

#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

ZnRxCommandValue pointValue(const ZnGePoint3d& point);
double degrees(double radians);

// Sets "type" ("line" or "arc"), "start", "end", "center", "radius", "startAngle" and "endAngle" (degrees) of
// a line or arc seen through the transform. All fields are there for every type, so that readers need not
// ask.
void describeShape(const ZnDbEntity& entity, const ZnGeMatrix3d& toWorld, ZnRxCommandValue& curve);

} // namespace companion
