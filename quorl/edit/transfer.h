// From one drawing to another: copying out and in, and inserting a whole drawing.
#pragma once

#include "quorl/base/array.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/id_mapping.h"

// Records of the same name in both drawings: the one of the destination serves, or both stay, that which
// comes along behind a prefix.
struct ZnDbTransferNames {
  bool keptApart = false;
  ZnString prefix; // "plate$0$" for a drawing that is called plate
};

// Clones entities of one drawing into the other's model space, moved so that base comes to lie on its origin.
// kCopyOutContext; the mapping tells what became what. The source stays as it is, but for center objects that
// lose edges. eNothingToDo for no entities, eInvalidInput for entities of several drawings.
Quorl::ErrorStatus zndbCopyOut(const ZnArray<ZnDbObjectId>& entities, ZnDbDatabase& to,
                               const ZnGePoint3d& base, const ZnDbTransferNames& names = {});

// Clones all of the other drawing's model space into a block of this one, which is new or empty, or into a
// space. kCopyInContext for a space, kInsertContext for a block; the events beginInsert, otherInsert and
// endInsert go around it. eNothingToDo for an empty drawing.
Quorl::ErrorStatus zndbInsertDrawing(ZnDbObjectId into, ZnDbDatabase& from, const ZnGeMatrix3d& transform,
                                     const ZnDbTransferNames& names, ZnArray<ZnDbObjectId>& made);

// A new block with all of the other drawing's model space, whose origin is the block's. eDuplicateKey,
// eInvalidName. Like a copy out it is all done or nothing.
Quorl::ErrorStatus zndbInsertAsBlock(ZnDbDatabase& to, const ZnString& name, ZnDbDatabase& from,
                                     const ZnDbTransferNames& names, ZnDbObjectId& block);
