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

  // Called by a live record of the table that comes to have a name, or is about to lose it.
  void enterName(ZnDbObjectId record, const ZnString& name);
  void removeName(ZnDbObjectId record, const ZnString& name);

  ZNDB_DECLARE_FIELDS
  void loaded() override;
  void memberAdded(ZnDbObjectId id) override;
  void memberRemoved(ZnDbObjectId id) override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  // eInUse for what every drawing needs.
  Quorl::ErrorStatus subErase(bool erasing) override;
  // A new record has its name and owner, and is about to be seen: a table gives it what it must not lack.
  virtual void completeRecord(ZnDbSymbolTableRecord&) const {}

private:
  ZnDbObjectId at(const ZnString& name) const; // null for a name that stands for nothing
  void clearIndex();
  void auditNames(std::vector<ZnString>& faults, bool fix);
  ZnString freeName(const ZnString& taken); // like the one that is taken
  ZnString completed(const ZnString& name);

  std::vector<ZnDbObjectId> records_;
  // Live records by folded names. Blocks that were given a number stand under it, null
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
  // eInvalidName, eDuplicateKey where the table has another record of that name, eInUse for a record that
  // every drawing has under its name.
  Quorl::ErrorStatus setName(const ZnString& name);

  ZNDB_DECLARE_FIELDS
  // eInvalidName, or eDuplicateKey beside a live record of that name.
  Quorl::ErrorStatus judgePlace(const ZnDbDatabase& drawing) const override;
  // The table finds its live records by name.
  void attachLinks() override;
  void detachLinks() override;

protected:
  // eInUse for a record that the drawing or a live object needs.
  Quorl::ErrorStatus subErase(bool erasing) override;

private:
  friend class ZnDbSymbolTable;
  class ZnDbSymbolTable* table() const; // null outside of any
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
