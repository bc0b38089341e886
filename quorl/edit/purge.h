// Taking away the blocks, layers, linetypes and dimension styles that nothing needs.
#pragma once

#include "quorl/base/array.h"
#include "quorl/db/core/database.h"

// Erases records of that class, of all four for null, that neither the drawing nor a live object needs, also
// those that only what was purged had needed; gives them in the order in which they went. What comes from an
// external drawing stays: it goes with that.
ZnArray<ZnDbObjectId> zndbPurge(ZnDbDatabase& drawing, const ZnRxClass* recordClass = nullptr);
