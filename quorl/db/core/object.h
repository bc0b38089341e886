// The base of all database objects.
#pragma once

#include <memory>
#include <vector>

#include "quorl/base/array.h"
#include "quorl/db/core/declare_fields.h"
#include "quorl/db/core/drawable.h"
#include "quorl/db/core/filer.h"
#include "quorl/db/core/object_id.h"
#include "quorl/db/core/object_pool.h"
#include "quorl/db/core/open.h"
#include "quorl/db/core/tdoc_filer.h"

class ZnDbFieldVisitor;
class ZnDbIdMapping;
class ZnDbObjectReactor;

class ZnDbObject : public ZnGiDrawable {
  ZNRX_DECLARE_MEMBERS(ZnDbObject)

public:
  ~ZnDbObject() override;
  // See object_pool.h; also for the classes of modules.
  static void* operator new(std::size_t size) { return ZnDbObjectPool::allocate(size); }
  static void operator delete(void* piece, std::size_t size) noexcept {
    ZnDbObjectPool::release(piece, size);
  }

  // Identity. Null for an object that is in no database.
  ZnDbObjectId objectId() const { return ZnDbObjectId(slot_); }
  ZnDbHandle handle() const { return objectId().handle(); }
  ZnDbDatabase* database() const { return slot_ ? slot_->database : nullptr; }
  ZnDbObjectId drawableId() const override { return objectId(); }
  ZnDbObjectId ownerId() const { return ownerId_; }
  // Sets the owner's id only; the owner's list of members is the owner's matter.
  void setOwnerId(ZnDbObjectId owner);

  // State. An object in no database counts as open for write.
  bool isErased() const { return slot_ && slot_->erased; }
  bool isReadEnabled() const { return !slot_ || slot_->readers || slot_->writers || slot_->evaluating; }
  bool isWriteEnabled() const { return !slot_ || slot_->writers || slot_->evaluating; }
  bool isUndoing() const;
  // Stop the program where the object is not open in the mode: that is a bug of the caller. The write form
  // also keeps the object's state for undo (autoUndo) and notes that it changes (recordModified).
  void assertReadEnabled() const;
  void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);

  // Ends one open of zndbOpenObject or of an appending operation; notifications go out when the last
  // writer closes.
  Quorl::ErrorStatus close();
  Quorl::ErrorStatus upgradeOpen();
  Quorl::ErrorStatus downgradeOpen();
  // Erases or brings back; the object must be open for write. The base tells watchers and reactors; a class
  // adds its own part in subErase and subBringBack. Erasing an erased object is eWasErased; bringing back one
  // that is not is eNothingToDo, one whose owner is erased eInvalidOwner, and one whose place is taken, or
  // that refers to what is gone, what judgePlace says.
  Quorl::ErrorStatus erase(bool erasing = true);

  // Extension dictionary; null id without one. Creating needs write.
  ZnDbObjectId extensionDictionary() const { return extensionDictionary_; }
  Quorl::ErrorStatus createExtensionDictionary();

  // Transient reactors; not owned, not filed.
  void addReactor(ZnDbObjectReactor* reactor);
  void removeReactor(ZnDbObjectReactor* reactor);

  // A copy in no database with the same fields and ids, owned by the caller.
  ZnRxObject* clone() const override;
  // Clones this object and what it owns into the owner; see ZnDbDatabase::deepCloneObjects.
  Quorl::ErrorStatus deepClone(ZnDbObject* owner, ZnDbObject*& copy, ZnDbIdMapping& mapping,
                               bool isPrimary = true);

  // Fields; each class states its own once, see declare_fields.h. A reader leaves the object usable whatever
  // the bytes say and reports damage by the status: a bad field keeps the value that it had.
  virtual Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const;
  virtual Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer);
  virtual Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const;
  virtual Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer);
  // By name and value; a visitor that changes something needs the object open for write.
  virtual void walkFields(ZnDbFieldVisitor& visitor);
  template<class Walk> void describeAll(Walk& walk);
  // Of the same class with the same values: what a clone of either would hold.
  bool hasSameFields(const ZnDbObject& other) const;

  // Whether the object may stand in the drawing as its fields say: what it refers to is of that drawing, and
  // its place there is free. Asked before it enters and after a field was set by name.
  virtual Quorl::ErrorStatus judgePlace(const ZnDbDatabase&) const { return Quorl::eOk; }

  // Reverse links of this object are entered and removed: after it enters a database, is read, cloned,
  // undone or unerased; before its fields are replaced and when it is erased. Both may be called twice.
  virtual void attachLinks() {}
  virtual void detachLinks() {}
  // After all objects of a file are read, in order of handles.
  virtual void loaded() {}

  // Called on a watcher (see watch_link.h) with the object that has changed; the watcher is not opened.
  virtual void watchedModified(const ZnDbObject*) {}
  virtual void watchedErased(const ZnDbObject*, bool /*erasing*/) {}
  // A member was appended to, moved from or moved to this owner, or changed by undo.
  virtual void memberAdded(ZnDbObjectId) {}
  virtual void memberRemoved(ZnDbObjectId) {}

  // Deep clone hooks, called on the originals that are being cloned and on the clones afterwards.
  virtual Quorl::ErrorStatus addMoreObjectsToDeepClone(ZnDbIdMapping&, ZnArray<ZnDbObjectId>&) const {
    return Quorl::eOk;
  }
  virtual Quorl::ErrorStatus postProcessAfterDeepClone(ZnDbIdMapping&) { return Quorl::eOk; }

  // Finds faults of the object's own; with fix they are mended. Each fault is one line in the report. Here
  // every field is held against its rule; classes add what ties fields and objects together.
  virtual void audit(std::vector<ZnString>& faults, bool fix);

protected:
  ZnDbObject() = default;
  virtual ZnString auditLabel() const; // how the audit's report calls the object
  virtual Quorl::ErrorStatus subErase(bool /*erasing*/) { return Quorl::eOk; }
  // The object is live again: what it had taken along follows.
  virtual void subBringBack() {}
  // Before and after a change of an open object's fields, for caches.
  virtual void subClose() {}

private:
  friend class ZnDbDatabase;
  friend class ZnDbUndoRecorder;
  friend struct ZnDbObjectAccess;

  Quorl::ErrorStatus judgeReturn() const;
  void takeExtension(bool erasing);

  ZnDbSlot* slot_ = nullptr;
  ZnDbObjectId ownerId_;
  ZnDbObjectId extensionDictionary_;
  // Since the first writer: whether it was announced that the object changes, and whether more than its
  // erased mark did.
  bool modified_ = false, fieldsChanged_ = false;
  bool eraseToggled_ = false;
  bool isNew_ = false;
  bool tookExtension_ = false; // erased its extension dictionary with itself
  std::unique_ptr<std::vector<ZnDbObjectReactor*>> reactors_;
};

#include "quorl/db/core/open_inl.h"
