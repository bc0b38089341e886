// What a reader has passed over that saves what it can instead of giving up.
#pragma once

#include <unordered_set>
#include <vector>

#include "quorl/file/file_error.h"

// Objects that can't be kept are left out from the beginning, so that nothing refers to them: where a reading
// loses some, it is done again without them.
class ZnSalvage {
public:
  // Something is damaged, and the reading goes on behind it.
  void note(const ZnFileError& error);
  // An object can't be kept: for a fault that was found now, or that an earlier reading found.
  void lose(ZnDbHandle object, ZnFileError error);
  bool isLost(std::uint64_t handle) const { return lost_.contains(handle); }

  void beginReading();
  bool hasTold() const { return !losses_.empty() || !notes_.empty(); }
  bool hasLostMore() const { return lost_.size() > lostBefore_; }
  // What the last reading met, in its order, after the objects that were lost.
  std::vector<ZnFileError> told() const;

private:
  std::unordered_set<std::uint64_t> lost_;
  size_t lostBefore_ = 0;
  std::vector<ZnFileError> losses_, notes_;
};
