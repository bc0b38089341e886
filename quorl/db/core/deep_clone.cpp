#include "quorl/db/core/deep_clone.h"

#include <unordered_set>

#include "quorl/db/core/database.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/core/object_access.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"

using Quorl::ErrorStatus;

namespace {

ZnDbDeepCloneCollector collector = nullptr;
ZnDbDeepCloneOwnerFinder ownerFinder = nullptr;

// Reads a clone's fields with the ids of its original replaced by what they became. What was not cloned
// stays within one drawing; another drawing can't name it.
class TranslatingFiler : public ZnDbMemoryFiler {
public:
  TranslatingFiler(ZnDbDatabase* destination, const ZnDbIdMapping& mapping)
      : ZnDbMemoryFiler(kClone, destination)
      , mapping_(mapping) {}

protected:
  ZnDbObjectId translated(ZnDbObjectId id, bool owned) const override {
    ZnDbIdPair pair(id);
    if (!id.isNull() && mapping_.compute(pair) && !pair.value().isNull()) return pair.value();
    return owned || id.database() != database() ? ZnDbObjectId() : id;
  }

private:
  const ZnDbIdMapping& mapping_;
};

struct Clone {
  ZnDbObjectId original, copy;
  bool primary = false;
};

// One deep clone, told in the order in which it happens.
class DeepCloner {
public:
  DeepCloner(ZnDbDatabase& source, ZnDbDatabase& destination, ZnDbObjectId owner, ZnDbIdMapping& mapping,
             bool arePrimary)
      : source_(source)
      , destination_(destination)
      , owner_(owner)
      , mapping_(mapping)
      , arePrimary_(arePrimary) {}

  ErrorStatus run(const ZnArray<ZnDbObjectId>& objects) {
    ZnRxEvent& events = ZnRxEvent::instance();
    events.tell([&](ZnRxEventReactor& reactor) { reactor.beginDeepClone(&destination_, mapping_); });
    ErrorStatus status = collect(objects);
    if (status == Quorl::eOk) {
      events.tell([&](ZnRxEventReactor& reactor) { reactor.beginDeepCloneTranslation(mapping_); });
      dropErased();
      status = fillClones();
    }
    if (status != Quorl::eOk) {
      takeBack();
      events.tell([&](ZnRxEventReactor& reactor) { reactor.abortDeepClone(mapping_); });
      return status;
    }
    settle();
    events.tell([&](ZnRxEventReactor& reactor) { reactor.endDeepClone(mapping_); });
    return Quorl::eOk;
  }

private:
  bool crossing() const { return &source_ != &destination_; }

  // Everything that must be cloned: the objects, what they own, across drawings what they cannot do
  // without, and what the hooks ask for; in rounds until nothing new turns up.
  ErrorStatus collect(const ZnArray<ZnDbObjectId>& objects) {
    ZnArray<ZnDbObjectId> round;
    const std::unordered_set<ZnDbObjectId> asked(objects.begin(), objects.end());
    for (const ZnDbObjectId id : objects) {
      if (id.isErased() || id.database() != &source_) return Quorl::eInvalidInput;
      if (!asked.count(id.slot()->object->ownerId()))
        if (const ErrorStatus status = judgeOwner(id); status != Quorl::eOk) return status;
      if (const ErrorStatus status = include(id, true, round); status != Quorl::eOk) return status;
    }
    while (!round.isEmpty()) {
      ZnArray<ZnDbObjectId> wanted, next;
      for (const ZnDbObjectId id : round) {
        ids_.clear();
        id.slot()->object->bdocOutFields(ids_);
        for (const auto* list : {&ids_.hardOwned, &ids_.softOwned})
          for (const ZnDbObjectId owned : *list) wanted.append(owned);
        if (crossing())
          for (const ZnDbObjectId needed : ids_.hardPointers) wanted.append(needed);
        id.slot()->object->addMoreObjectsToDeepClone(mapping_, wanted);
      }
      if (collector) collector(mapping_, round, wanted);
      for (const ZnDbObjectId id : wanted)
        if (const ErrorStatus status = include(id, false, next); status != Quorl::eOk) return status;
      round = std::move(next);
    }
    return Quorl::eOk;
  }

  // Tables take their records, under names that are free, and blocks take entities.
  ErrorStatus judgeOwner(ZnDbObjectId id) const {
    const ZnDbObject* owner = owner_.slot()->object;
    if (ZnDbBlockTableRecord::cast(owner))
      return id.isDerivedFrom(ZnDbEntity::desc()) ? Quorl::eOk : Quorl::eInvalidOwner;
    const auto* table = ZnDbSymbolTable::cast(owner);
    if (!table) return Quorl::eOk;
    if (!id.isDerivedFrom(table->recordClass())) return Quorl::eInvalidOwner;
    const auto& name = static_cast<const ZnDbSymbolTableRecord*>(id.slot()->object)->name();
    return !crossing() && table->has(name) && !name.view().starts_with(L"*") ? Quorl::eDuplicateKey
                                                                             : Quorl::eOk;
  }

  ErrorStatus include(ZnDbObjectId id, bool primary, ZnArray<ZnDbObjectId>& round) {
    ZnDbIdPair known(id);
    if (id.isErased() || id.database() != &source_ || mapping_.compute(known)) return Quorl::eOk;
    if (const ZnDbObjectId twin = recordOfSameName(id); !twin.isNull()) {
      mapping_.assign(ZnDbIdPair(id, twin, false));
      return Quorl::eOk;
    }
    auto* copy = static_cast<ZnDbObject*>(id.objectClass()->create());
    if (!copy) return Quorl::eWrongObjectClass;
    ZnDbObjectId copyId;
    if (const ErrorStatus status = destination_.addObject(copy, {}, copyId); status != Quorl::eOk) {
      delete copy;
      return status;
    }
    mapping_.assign(ZnDbIdPair(id, copyId, true, primary && arePrimary_));
    clones_.push_back({id, copyId, primary});
    round.append(id);
    return Quorl::eOk;
  }

  // Across drawings a record that the destination has by name serves for the one that would come along.
  ZnDbObjectId recordOfSameName(ZnDbObjectId id) const {
    if (!crossing() || !id.isDerivedFrom(ZnDbSymbolTableRecord::desc())) return {};
    const auto* record = static_cast<const ZnDbSymbolTableRecord*>(id.slot()->object);
    const bool anonymous = record->name().view().starts_with(L"*");
    const auto* block = ZnDbBlockTableRecord::cast(id.slot()->object);
    if (anonymous && !(block && block->isLayout())) return {};
    ZnDbObjectId twin;
    ZnDbHolder<ZnDbSymbolTable> table(destinationTable(id));
    if (table.isOpen()) table->getIdAt(record->name(), twin);
    const bool isApart = !mapping_.namePrefix().isEmpty() && !source_.headerIds().standsUnderItsName(id);
    if (!isApart) return twin;
    twin.setNull();
    if (mapping_.reusesPrefixed() && !block && table.isOpen())
      table->getIdAt(mapping_.namePrefix() + record->name(), twin);
    return twin;
  }

  // Before the table finds the record: the name under which it comes along.
  ErrorStatus renamed(const Clone& clone) const {
    auto* record = ZnDbSymbolTableRecord::cast(clone.copy.slot()->object);
    if (!crossing() || !record || mapping_.namePrefix().isEmpty() || record->name().view().starts_with(L"*"))
      return Quorl::eOk;
    const ZnDbHolder<ZnDbSymbolTable> table(destinationTable(clone.original));
    const ZnString own = record->name();
    ZnString name = mapping_.namePrefix() + own;
    for (int number = 1; table.isOpen() && table->has(name); ++number)
      name = mapping_.namePrefix() + own + L"-" + ZnString(std::to_wstring(number).c_str());
    return record->setName(name);
  }

  ZnDbObjectId destinationTable(ZnDbObjectId recordId) const {
    const auto* table = ZnDbSymbolTable::cast(recordId.slot()->object->ownerId().slot()->object);
    if (!table) return {};
    for (const ZnDbObjectId id : {destination_.blockTableId(), destination_.layerTableId(),
                                  destination_.linetypeTableId(), destination_.dimStyleTableId()})
      if (id.objectClass() == table->isA()) return id;
    return {};
  }

  // What a reactor has taken away meanwhile, such as a dependency on an edge that stays behind.
  void dropErased() {
    for (const Clone& clone : clones_) {
      if (!clone.original.isErased()) continue;
      takeBack(clone);
      mapping_.assign(ZnDbIdPair(clone.original));
    }
    std::erase_if(clones_, [](const Clone& clone) { return clone.original.isErased(); });
  }

  ErrorStatus fillClones() {
    // The filer keeps its memory from clone to clone.
    TranslatingFiler filer(&destination_, mapping_);
    for (const Clone& clone : clones_) {
      filer.clear();
      clone.original.slot()->object->bdocOutFields(filer);
      filer.rewind();
      ZnDbObject* copy = clone.copy.slot()->object;
      if (const ErrorStatus status = copy->bdocInFields(filer); status != Quorl::eOk) return status;
      if (const ErrorStatus status = renamed(clone); status != Quorl::eOk) return status;
      const ZnDbObjectId owner = ownerOf(clone);
      if (owner.isDerivedFrom(ZnDbBlockTableRecord::desc()) && mayNotStandInBlock(clone, owner))
        return Quorl::eInvalidOwner;
      ZnDbObjectAccess::setOwner(copy, owner);
    }
    // With all in place: a block that is shown within itself is no drawing's. Each reference is hung up once
    // it may stand, so that the next is judged with it.
    for (const Clone& clone : clones_) {
      auto* reference = ZnDbBlockReference::cast(clone.copy.slot()->object);
      if (!reference) continue;
      if (const ErrorStatus status = reference->judgePlace(destination_); status != Quorl::eOk) return status;
      reference->attachLinks();
    }
    return Quorl::eOk;
  }

  // A block lists entities; of others it owns its extension dictionary alone.
  static bool mayNotStandInBlock(const Clone& clone, ZnDbObjectId block) {
    return !clone.copy.isDerivedFrom(ZnDbEntity::desc()) &&
           block.slot()->object->extensionDictionary() != clone.copy;
  }

  // A clone belongs to what its original's owner became. The objects that were asked for go to the owner
  // that was asked for; what the hooks brought goes to the same owner in one drawing, and to the table or
  // dictionary of the same role in another.
  ZnDbObjectId ownerOf(const Clone& clone) const {
    const ZnDbObject* original = clone.original.slot()->object;
    ZnDbIdPair pair(original->ownerId());
    if (mapping_.compute(pair) && !pair.value().isNull() && (pair.isCloned() || !clone.primary))
      return pair.value();
    if (clone.primary) return owner_;
    if (ownerFinder)
      if (const ZnDbObjectId found = ownerFinder(original, mapping_, owner_); !found.isNull()) return found;
    if (!crossing()) return original->ownerId();
    return clone.original.isDerivedFrom(ZnDbSymbolTableRecord::desc()) ? destinationTable(clone.original)
                                                                       : owner_;
  }

  void settle() {
    for (const Clone& clone : clones_) {
      const ZnDbObjectId owner = clone.copy.slot()->object->ownerId();
      ZnDbIdPair pair(clone.original.slot()->object->ownerId());
      const bool ownerLists = mapping_.compute(pair) && pair.isCloned() && pair.value() == owner;
      if (!ownerLists && owner.isValid()) owner.slot()->object->memberAdded(clone.copy);
    }
    for (const Clone& clone : clones_) clone.copy.slot()->object->loaded();
    for (const Clone& clone : clones_) clone.copy.slot()->object->attachLinks();
    for (const Clone& clone : clones_) clone.copy.slot()->object->close();
    for (const Clone& clone : clones_)
      ZnDbObjectAccess::tellCopied(clone.original.slot()->object, clone.copy.slot()->object);
    for (const Clone& clone : clones_) clone.original.slot()->object->postProcessAfterDeepClone(mapping_);
  }

  void takeBack() {
    for (const Clone& clone : clones_) takeBack(clone);
  }
  static void takeBack(const Clone& clone) {
    ZnDbObject* copy = clone.copy.slot()->object;
    ZnDbObjectAccess::markErased(copy, true);
    ZnDbObjectAccess::forget(copy);
    copy->close();
  }

  ZnDbDatabase& source_;
  ZnDbDatabase& destination_;
  ZnDbObjectId owner_;
  ZnDbIdMapping& mapping_;
  bool arePrimary_;
  ZnDbIdCollector ids_;
  std::vector<Clone> clones_;
};

} // namespace

void zndbSetDeepCloneCollector(ZnDbDeepCloneCollector newCollector) { collector = newCollector; }

void zndbSetDeepCloneOwnerFinder(ZnDbDeepCloneOwnerFinder newFinder) { ownerFinder = newFinder; }

ErrorStatus ZnDbDatabase::deepCloneObjects(const ZnArray<ZnDbObjectId>& objects, ZnDbObjectId owner,
                                           ZnDbIdMapping& mapping, bool arePrimary) {
  if (objects.isEmpty()) return Quorl::eNothingToDo;
  if (!owner.isValid() || owner.isErased()) return Quorl::eInvalidOwner;
  return DeepCloner(*this, *owner.database(), owner, mapping, arePrimary).run(objects);
}
