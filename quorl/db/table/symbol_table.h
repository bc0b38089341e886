// Tables of named records: blocks, layers, linetypes, dimension styles.
#pragma once

#include <unordered_map>
#include <vector>

#include "quorl/db/core/object.h"

class ZnDbSymbolTableRecord;

class ZnDbSymbolTable : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbSymbolTable)

public:
  // Records by name, without regard to case. An erased record counts only when asked for.
  // eKeyNotFound leaves the id null.
  Quorl::ErrorStatus getIdAt(const ZnString& name, ZnDbObjectId& id, bool getErased = false) const;
  bool has(const ZnString& name) const;
  // Adds a record in no database; the table owns it then, and it is open for write until closed. The name
  // "*U" (and "*D") is completed by the next free number. eDuplicateKey, eInvalidName, eWrongObjectClass.
  Quorl::ErrorStatus add(ZnDbObjectId& id, ZnDbSymbolTableRecord* record);
  // Ids of the records, erased ones too, in order of addition.
  const std::vector<ZnDbObjectId>& recordIds() const { return records_; }
  // A new iterator, owned by the caller.
  Quorl::ErrorStatus newIterator(class ZnDbSymbolTableIterator*& iterator, bool skipDeleted = true) const;
  virtual const ZnRxClass* recordClass() const;

  // Called by a record that changes its name.
  Quorl::ErrorStatus rename(ZnDbObjectId record, const ZnString& from, const ZnString& to);

  ZNDB_DECLARE_FIELDS
  void loaded() override;
  void memberAdded(ZnDbObjectId id) override;
  void memberRemoved(ZnDbObjectId id) override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  // A new record has its name and owner, and is about to be seen: a table gives it what it must not lack.
  virtual void completeRecord(ZnDbSymbolTableRecord&) const {}

private:
  ZnDbObjectId at(const ZnString& name) const; // null for a name that stands for nothing
  void index(ZnDbObjectId id, const ZnString& name);
  void unindex(ZnDbObjectId id, const ZnString& name);
  void clearIndex();
  ZnString completed(const ZnString& name);

  std::vector<ZnDbObjectId> records_;
  // Folded names; the live record wins over erased ones. Blocks that were given a number stand under it, null
  // where it is not in use: every center object has one, and nobody asks for it by name.
  std::unordered_map<ZnAtom, ZnDbObjectId> byName_;
  std::vector<ZnDbObjectId> byNumber_[2]; // of "*U" and "*D"
  bool hasFarNumbers_ = false;            // numbers that are too far off for the above, under their names
  std::uint64_t nextAnonymous_ = 1;
};

class ZnDbSymbolTableIterator {
public:
  ZnDbSymbolTableIterator(std::vector<ZnDbObjectId> ids, bool skipDeleted);
  void start();
  bool done() const { return at_ >= ids_.size(); }
  void step();
  Quorl::ErrorStatus getRecordId(ZnDbObjectId& id) const;

private:
  void skip();
  std::vector<ZnDbObjectId> ids_;
  bool skipDeleted_ = true;
  size_t at_ = 0;
};

class ZnDbSymbolTableRecord : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbSymbolTableRecord)

public:
  const ZnString& name() const { return name_; }
  Quorl::ErrorStatus getName(ZnString& name) const;
  // eInvalidName, or eDuplicateKey where the table has another record of that name.
  Quorl::ErrorStatus setName(const ZnString& name);

  ZNDB_DECLARE_FIELDS

private:
  friend class ZnDbSymbolTable;
  ZnString name_;
};

namespace ZnDbSymbolUtilities {
// Names of records: not empty, none of <>/\":;?*|,=` or control characters, no blanks at the ends, at most
// 255 characters; with allowVerticalBar "|" passes (names from other files). eInvalidName.
Quorl::ErrorStatus validateSymbolName(const ZnString& name, bool allowVerticalBar = false);
// The name with offending characters replaced by "_"; never empty.
ZnString repairSymbolName(const ZnString& name);
// The layer that every drawing has.
ZnDbObjectId layerZeroId(const ZnDbDatabase* database);
} // namespace ZnDbSymbolUtilities
