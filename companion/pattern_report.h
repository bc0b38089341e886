// What TORVI.REPORT tells of a pattern beside what it tells of every center object.
#pragma once

#include "exchange/report.h"
#include "torvi/core/object_wrapper.h"

namespace companion {

void describePattern(const ZnDbTorviObjectWrapper& wrapper, exchange::ReportedCenter& told);

} // namespace companion
