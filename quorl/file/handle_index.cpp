#include "quorl/file/handle_index.h"

#include <algorithm>

void ZnHandleIndex::finish() {
  // Eight places an object keep the array smaller than the objects themselves, however many were erased.
  constexpr std::uint64_t kPlacesEach = 8;
  dense_.clear();
  if (lastHandle() / kPlacesEach > entries_.size()) return;
  dense_.resize(lastHandle() + 1);
  for (const auto& [handle, id] : entries_) dense_[handle] = id;
}

ZnDbObjectId ZnHandleIndex::find(std::uint64_t handle) const {
  if (handle > lastHandle()) return {};
  if (!dense_.empty()) return dense_[handle];
  const auto found =
      std::lower_bound(entries_.begin(), entries_.end(), handle,
                       [](const auto& entry, std::uint64_t wanted) { return entry.first < wanted; });
  return found != entries_.end() && found->first == handle ? found->second : ZnDbObjectId();
}
