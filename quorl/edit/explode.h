// Exploding: what an entity consists of takes its place.
#pragma once

#include "quorl/base/array.h"
#include "quorl/base/error_status.h"
#include "quorl/db/core/object_id.h"

// Of a block reference the entities of its block are cloned (kExplodeContext) into the block where it stands,
// nested references as such; they stand where they were seen, and what they left to the reference is theirs.
// What can't be shown under an uneven scale becomes what can: circles become ellipses. Then the reference is
// erased. Of others the pieces take their place. made gets the new entities.
// eExternalDrawing for a reference to one, eNotProvided for what consists of nothing else, eNothingToDo for
// an empty block, eOnLockedLayer. On failure some may have been made: callers put a transaction around it.
Quorl::ErrorStatus zndbExplode(ZnDbObjectId entity, ZnArray<ZnDbObjectId>& made);
