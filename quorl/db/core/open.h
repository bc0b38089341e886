// Opening objects: many readers or one writer, and the scoped holders through which all code works.
#pragma once

#include "quorl/base/error_status.h"
#include "quorl/db/core/object_id.h"

enum class ZnDbOpenMode { kForRead, kForWrite, kForNotify };

// Opens strictly. eNullObjectId, ePermanentlyErased, eWasErased (unless openErased), eWasOpenForRead or
// eWasOpenForWrite by somebody else, eOnLockedLayer for writing an entity whose layer is locked. The object
// stays open until its close(). kForNotify is granted beside a writer too and ended by endZnDbObjectRead,
// since close() would end the writer's access.
Quorl::ErrorStatus zndbOpenObject(ZnDbObject*& object, ZnDbObjectId id, ZnDbOpenMode mode,
                                  bool openErased = false);
// Opens for write even if the entity's layer is locked.
Quorl::ErrorStatus zndbForceOpenObjectOnLockedLayer(ZnDbObject*& object, ZnDbObjectId id);

// As above for an object of class T; eWrongObjectClass and nothing open for another class.
template<class T>
Quorl::ErrorStatus zndbOpenObject(T*& object, ZnDbObjectId id, ZnDbOpenMode mode, bool openErased = false);

// Access, on which the holders are built: reading is granted next to a writer, since both are on one thread;
// writing is granted next to a writer and within an evaluation of the object, and refused with
// eWasOpenForRead while others read. A null class takes any. Each granted access is ended by one
// revertZnDbObjectFromWrite (for a write) or endZnDbObjectRead.
Quorl::ErrorStatus accessZnDbObjectForRead(ZnDbObject*& object, ZnDbObjectId id, const ZnRxClass* cls,
                                           bool openErased = false);
Quorl::ErrorStatus accessZnDbObjectForWrite(ZnDbObject*& object, ZnDbObjectId id, const ZnRxClass* cls,
                                            bool openErased = false, bool evenIfLocked = false,
                                            int ownReaders = 0);
void revertZnDbObjectFromWrite(ZnDbObject* object);
void endZnDbObjectRead(ZnDbObject* object);

// A scoped holder: opens for read, upgrades to write on request, and on leaving scope reverts the upgrade
// and closes the object. It can also own an object that is in no database yet, which it deletes.
template<class T> class ZnDbHolder {
public:
  ZnDbHolder() = default;
  explicit ZnDbHolder(ZnDbObjectId id, bool openErased = false) { open(id, openErased); }
  // Takes ownership of an object without an id; it is deleted unless it is in a database by then.
  explicit ZnDbHolder(T* object) { acquire(object); }
  ZnDbHolder(const ZnDbHolder&) = delete;
  ZnDbHolder& operator=(const ZnDbHolder&) = delete;
  ~ZnDbHolder() { close(); }

  // eNotOpenedYet at first, eNullObjectPointer after acquiring null, else the status of the last opening.
  Quorl::ErrorStatus status() const { return status_; }
  // As status, but eHeldForReadOnly for what is held and may not be changed.
  Quorl::ErrorStatus writeStatus() const {
    if (status_ != Quorl::eOk) return status_;
    return writing_ || owned_ ? Quorl::eOk : Quorl::eHeldForReadOnly;
  }
  bool isOpen() const { return status_ == Quorl::eOk; }
  T* object() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }

  Quorl::ErrorStatus open(ZnDbObjectId id, bool openErased = false);
  // Asks for write on what is held for read; the status says who is in the way, and reading goes on.
  Quorl::ErrorStatus upgrade(bool evenIfLocked = false);
  Quorl::ErrorStatus openForWrite(ZnDbObjectId id, bool openErased = false, bool evenIfLocked = false);
  void acquire(T* object);
  // Gives up ownership or access without deleting: for an object that was added to a database meanwhile.
  T* release();
  void close();

private:
  T* object_ = nullptr;
  Quorl::ErrorStatus status_ = Quorl::eNotOpenedYet;
  bool writing_ = false;
  bool owned_ = false;
};
