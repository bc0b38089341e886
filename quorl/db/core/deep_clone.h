// Hooks by which what lies above the database takes part in cloning.
#pragma once

#include "quorl/base/array.h"
#include "quorl/db/core/id_mapping.h"

// Asked once for each round of objects that were found to be cloned: which others must travel with them
// although no ownership leads there. The mapping holds pairs for all objects found so far.
using ZnDbDeepCloneCollector = void (*)(ZnDbIdMapping& mapping, const ZnArray<ZnDbObjectId>& cloned,
                                        ZnArray<ZnDbObjectId>& more);
void zndbSetDeepCloneCollector(ZnDbDeepCloneCollector collector);

// Asked for the owner of a clone whose original's owner is not cloned: the id of an object of the
// destination, or null for the usual owner (see deep_clone.cpp).
using ZnDbDeepCloneOwnerFinder = ZnDbObjectId (*)(const ZnDbObject* original, const ZnDbIdMapping& mapping,
                                                  ZnDbObjectId destinationOwner);
void zndbSetDeepCloneOwnerFinder(ZnDbDeepCloneOwnerFinder finder);
