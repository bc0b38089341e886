// Blocks: the table, the records that hold entities, and the walk over a record's entities.
#pragma once

#include <string_view>
#include <vector>

#include "quorl/db/core/erased_together.h"
#include "quorl/db/table/symbol_table.h"
#include "quorl/ge/bound_block3d.h"

class ZnDbBlockReference;
class ZnDbBlockTableRecordIterator;
class ZnDbEntity;

class ZnDbBlockTable : public ZnDbSymbolTable {
  ZNRX_DECLARE_MEMBERS(ZnDbBlockTable)

public:
  const ZnRxClass* recordClass() const override;
};

class ZnDbBlockTableRecord : public ZnDbSymbolTableRecord {
  ZNRX_DECLARE_MEMBERS(ZnDbBlockTableRecord)

public:
  // Entities. appendZnDbEntity takes ownership of an entity in no database and leaves it open for write.
  // eAlreadyInDatabase, eNotInDatabase (this record), eInvalidOwner for a reference that may not stand here
  // (see mayShow), eInvalidInput for one that refers to another drawing.
  Quorl::ErrorStatus appendZnDbEntity(ZnDbObjectId& id, ZnDbEntity* entity);
  Quorl::ErrorStatus appendZnDbEntity(ZnDbEntity* entity);
  // Moves entities of other records of this database into this one; their ids stay. All are moved or none;
  // eInvalidOwner as above. Undoing puts each back where it stood in the drawing order.
  Quorl::ErrorStatus assumeOwnershipOf(const ZnArray<ZnDbObjectId>& entities);
  // A new iterator, owned by the caller.
  Quorl::ErrorStatus newIterator(ZnDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                 bool skipDeleted = true) const;
  // All entities in drawing order, erased ones too.
  const std::vector<ZnDbObjectId>& entityIds() const { return entities_; }

  // References that show this block, not erased, in order of handles. directOnly false adds those to blocks
  // that contain this one. forceValidity is kept for files that are read in parts, which do not occur here.
  Quorl::ErrorStatus getBlockReferenceIds(ZnArray<ZnDbObjectId>& ids, bool directOnly = true,
                                          bool forceValidity = false) const;
  // Whether a reference to that block may stand in this one: not where a block would come to contain itself,
  // or blocks would stand in one another more than kDeepestNesting deep.
  bool mayShow(ZnDbObjectId block) const;
  static constexpr int kDeepestNesting = 1000;
  // Of the direct references that are not erased; only is set when it is exactly one.
  int countReferences(ZnDbObjectId& only) const;

  bool isAnonymous() const; // the name begins with "*" and it is no layout
  bool isLayout() const { return !layoutId_.isNull(); }
  bool isFromExternalReference() const { return external_; }
  void setIsFromExternalReference(bool external);
  ZnDbObjectId layoutId() const { return layoutId_; }
  void setLayoutId(ZnDbObjectId layout);

  // The box of the visible entities; eNothingToDo for an empty block.
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const;

  ZNDB_DECLARE_FIELDS
  void memberAdded(ZnDbObjectId id) override;
  void memberRemoved(ZnDbObjectId id) override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  // Erasing a block erases its entities, and brings those back that it erased. eInUse while a reference shows
  // it.
  Quorl::ErrorStatus subErase(bool erasing) override;
  void subBringBack() override;

private:
  friend class ZnDbBlockReference;
  void moveEntity(ZnDbEntity& entity);
  void keepOrder(ZnDbObjectId id);
  void raiseNesting(int levels);
  // Kept by the references themselves, each of which knows its place in the list.
  std::vector<ZnDbBlockReference*> references_;
  std::vector<ZnDbObjectId> entities_;
  ZnDbErasedTogether erasedTogether_;
  // How many levels of blocks stand in this one; what was erased since may still count.
  int nesting_ = 0;
  ZnDbObjectId layoutId_;
  bool external_ = false;
};

class ZnDbBlockTableRecordIterator {
public:
  ZnDbBlockTableRecordIterator(const ZnDbBlockTableRecord& record, bool atBeginning, bool skipDeleted);
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const { return at_ < 0 || at_ >= static_cast<int>(ids_.size()); }
  void step(bool forward = true, bool skipDeleted = true);
  Quorl::ErrorStatus getEntityId(ZnDbObjectId& id) const;

private:
  void skip(bool forward);
  std::vector<ZnDbObjectId> ids_;
  bool skipDeleted_ = true;
  int at_ = 0;
};
