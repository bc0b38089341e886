// Center lines whose direction may turn round when their edges change; the set is the whole process's.
#pragma once

#include "torvi/host/database.h"

namespace torvi {

void markNotToKeepDirection(const ZnArray<ZnDbObjectId>& lines);
void unmarkAllNotToKeepDirection();
bool isNotToKeepDirection(ZnDbObjectId line);
void forgetDirectionMarksOf(const ZnDbDatabase& drawing); // which goes away

} // namespace torvi
