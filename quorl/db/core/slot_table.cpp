#include "quorl/db/core/slot_table.h"

#include <algorithm>

ZnDbSlot* ZnDbSlotTable::find(std::uint64_t handle, bool create) {
  const std::uint64_t number = handle / kBlock;
  if (number != lastNumber_ || !lastBlock_) {
    auto found = blocks_.find(number);
    if (found == blocks_.end()) {
      if (!create) return nullptr;
      found = blocks_.emplace(number, Block(kBlock)).first;
    }
    lastNumber_ = number;
    lastBlock_ = found->second.data();
  }
  return &lastBlock_[handle % kBlock];
}

ZnDbSlot* ZnDbSlotTable::make(ZnDbDatabase* database) {
  ZnDbSlot* slot = find(next_, true);
  settle(slot, database, next_);
  return slot;
}

void ZnDbSlotTable::settle(ZnDbSlot* slot, ZnDbDatabase* database, std::uint64_t handle) {
  slot->database = database;
  slot->handle = handle;
  next_ = std::max(next_, handle + 1);
}

void ZnDbSlotTable::setNext(std::uint64_t next) { next_ = std::max(next_, next); }
