// The objects of a file by handle. Drawings number their objects almost without gaps, so a plain array finds
// them; only a file with wild handles is searched.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "quorl/db/core/object_id.h"

class ZnHandleIndex {
public:
  // Handles in ascending order, each once; with a null id for an object of the file that is left out.
  void add(std::uint64_t handle, ZnDbObjectId id) { entries_.emplace_back(handle, id); }
  void reserve(size_t count) { entries_.reserve(count); }
  // After the last add, before the first find.
  void finish();
  // Null for a handle that names no object of the file.
  ZnDbObjectId find(std::uint64_t handle) const;

  size_t size() const { return entries_.size(); }
  ZnDbObjectId at(size_t index) const { return entries_[index].second; }
  std::uint64_t handleAt(size_t index) const { return entries_[index].first; }
  std::uint64_t lastHandle() const { return entries_.empty() ? 0 : entries_.back().first; }

private:
  std::vector<std::pair<std::uint64_t, ZnDbObjectId>> entries_;
  std::vector<ZnDbObjectId> dense_;
};
