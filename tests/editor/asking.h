// What the editor asks of the objects that it finds.
#pragma once

#include "quorl/base/error_status.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/table/block_table.h"

inline bool isRound(ZnDbObjectId id) {
  return id.isDerivedFrom(ZnDbCircle::desc()) || id.isDerivedFrom(ZnDbArc::desc());
}

inline const ZnDbBlockTableRecord* recordAt(ZnDbObjectId id) {
  return ZnDbBlockTableRecord::cast(id.slot()->object);
}

inline const ZnDbBlockTableRecord* ownerOf(ZnDbObjectId entity) {
  return recordAt(entity.slot()->object->ownerId());
}

inline bool showsDrawn(ZnDbObjectId id) {
  const auto* reference = ZnDbBlockReference::cast(id.slot()->object);
  return reference && !recordAt(reference->blockTableRecord())->isAnonymous();
}

inline const char* word(Quorl::ErrorStatus status) { return status == Quorl::eOk ? "" : ", refused"; }
