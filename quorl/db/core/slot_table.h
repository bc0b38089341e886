// The slots of a drawing by handle. They stand in blocks that never move, so that an id can hold an address.
#pragma once

#include <map>
#include <vector>

#include "quorl/db/core/object_id.h"
#include "quorl/db/core/object_pool.h"

class ZnDbSlotTable {
public:
  // Null for a handle of which nothing was made, unless create.
  ZnDbSlot* find(std::uint64_t handle, bool create);
  // The slot of the next free handle, for an object of the drawing.
  ZnDbSlot* make(ZnDbDatabase* database);
  // A slot that is only referred to so far gets its handle and drawing; later ones come above it.
  void settle(ZnDbSlot* slot, ZnDbDatabase* database, std::uint64_t handle);

  std::uint64_t next() const { return next_; }
  void setNext(std::uint64_t next);
  size_t liveCount() const { return live_; } // objects that are not erased
  void count(int change) { live_ += static_cast<size_t>(static_cast<std::ptrdiff_t>(change)); }

  // Slots with an object, erased ones too, in order of handles.
  template<class Call> void forEach(Call&& call) {
    for (auto& [number, block] : blocks_)
      for (ZnDbSlot& slot : block)
        if (slot.object) call(slot);
  }

private:
  static constexpr std::uint64_t kBlock = 256;
  using Block = std::vector<ZnDbSlot, ZnDbPoolAllocator<ZnDbSlot>>; // of kBlock slots, which never move

  std::map<std::uint64_t, Block> blocks_;
  std::uint64_t lastNumber_ = ~0ull;
  ZnDbSlot* lastBlock_ = nullptr;
  std::uint64_t next_ = 1;
  size_t live_ = 0;
};
