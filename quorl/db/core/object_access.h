// What opening and closing do to an object; inside the database library only.
#pragma once

#include "quorl/db/core/object.h"

struct ZnDbObjectAccess {
  static ZnDbSlot* slot(const ZnDbObject* object) { return object->slot_; }
  static void setSlot(ZnDbObject* object, ZnDbSlot* slot) { object->slot_ = slot; }
  static void setOwner(ZnDbObject* object, ZnDbObjectId owner) { object->ownerId_ = owner; }
  static void setNew(ZnDbObject* object) { object->isNew_ = true; }
  // Nobody is notified of what happened to the object so far: it is as if it had never been.
  static void forget(ZnDbObject* object) {
    object->isNew_ = object->modified_ = object->fieldsChanged_ = object->eraseToggled_ = false;
  }

  // eNullObjectId, ePermanentlyErased or eWasErased, before any mode is looked at.
  static Quorl::ErrorStatus exists(ZnDbObjectId id, bool openErased);
  // eOnLockedLayer for an entity on a locked layer.
  static Quorl::ErrorStatus notLocked(const ZnDbObject* object);
  // The last writer is gone: notifies everyone of what happened since the first.
  static void finishWrite(ZnDbObject* object);
  static void tellModified(ZnDbObject* object, bool undone);
  static void tellErased(ZnDbObject* object);
  static void tellCopied(const ZnDbObject* original, const ZnDbObject* copy);
  static void tellOpenedForModify(ZnDbObject* object);
  // Sets the erased mark and keeps the count and the links in step with it.
  static void markErased(ZnDbObject* object, bool erased);
};
