// A dictionary of objects by name; it owns them.
#pragma once

#include <vector>

#include "quorl/db/core/erased_together.h"

class ZnDbDictionary : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbDictionary)

public:
  // Names are compared without regard to case. eKeyNotFound leaves the id null.
  Quorl::ErrorStatus getAt(const ZnString& name, ZnDbObjectId& id) const;
  // As above and opens the object; the caller closes it.
  Quorl::ErrorStatus getAt(const ZnString& name, ZnDbObject*& object, ZnDbOpenMode mode) const;
  // Adds an object in no database, which is open for write until closed; an entry of that name is replaced
  // and its object erased.
  Quorl::ErrorStatus setAt(const ZnString& name, ZnDbObject* object, ZnDbObjectId& id);
  Quorl::ErrorStatus remove(const ZnString& name); // erases the object as well
  bool has(const ZnString& name) const;
  int entryCount() const;

  struct Entry {
    ZnString name;
    ZnDbObjectId id;
  };
  const std::vector<Entry>& entries() const { return entries_; } // in order of addition, erased ones too

  ZNDB_DECLARE_FIELDS
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  // With its entries, which come back with it. eInUse for a dictionary that every drawing needs.
  Quorl::ErrorStatus subErase(bool erasing) override;
  void subBringBack() override;

private:
  const Entry* entry(const ZnString& name) const;
  std::vector<Entry> entries_;
  ZnDbErasedTogether erasedTogether_;
};
