// The id of a database object: a pointer to the object's slot. Opening follows the pointer; class,
// owner database and erased state are answered from the slot, without opening.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>

#include "quorl/base/handle.h"
#include "quorl/rx/class.h"

class ZnDbDatabase;
class ZnDbObject;
struct ZnDbWatchLink;

// A slot lives as long as its database. Everything here is the database's to change.
struct ZnDbSlot {
  ZnDbObject* object = nullptr; // null while the handle is only referred to
  const ZnRxClass* objectClass = nullptr;
  ZnDbDatabase* database = nullptr;
  ZnDbWatchLink* watchers = nullptr; // ring of links of those who watch this object, oldest first
  std::uint64_t handle = 0;
  std::uint32_t undoStamp = 0; // undo step in which the object's state was last kept
  std::uint32_t users = 0;     // live objects that can't do without this one, see use_count.h
  std::uint16_t readers = 0;
  std::uint16_t writers = 0;
  bool evaluating = false; // held by an evaluation: whoever asks within it may write
  bool erased = false;
  bool leftOut = false; // not in the file that is being written, although it is live
};

class ZnDbObjectId {
public:
  constexpr ZnDbObjectId() = default;
  constexpr explicit ZnDbObjectId(ZnDbSlot* slot)
      : slot_(slot) {}

  // Null: refers to nothing. Valid: refers to an object that exists, erased or not.
  bool isNull() const { return slot_ == nullptr; }
  bool isValid() const { return slot_ && slot_->object; }
  bool isErased() const { return !slot_ || slot_->erased || !slot_->object; }
  ZnDbDatabase* database() const { return slot_ ? slot_->database : nullptr; }
  ZnDbHandle handle() const { return ZnDbHandle(slot_ ? slot_->handle : 0); }
  const ZnRxClass* objectClass() const { return slot_ ? slot_->objectClass : nullptr; }
  bool isDerivedFrom(const ZnRxClass* cls) const { return ZnRxClass::isDerivedFrom(objectClass(), cls); }
  void setNull() { slot_ = nullptr; }

  friend bool operator==(ZnDbObjectId a, ZnDbObjectId b) { return a.slot_ == b.slot_; }
  // A null id compares equal to zero.
  friend bool operator==(ZnDbObjectId id, int zero) { return zero == 0 && id.isNull(); }
  // Ids are ordered by handle within a drawing, so that ordered sets are the same on every run.
  friend bool operator<(ZnDbObjectId a, ZnDbObjectId b) { return a.handle() < b.handle(); }

  ZnDbSlot* slot() const { return slot_; }

private:
  ZnDbSlot* slot_ = nullptr;
};

template<> struct std::hash<ZnDbObjectId> {
  size_t operator()(ZnDbObjectId id) const { return std::hash<const void*>()(id.slot()); }
};
