#include "quorl/file/salvage.h"

void ZnSalvage::note(const ZnFileError& error) { notes_.push_back(error); }

void ZnSalvage::lose(ZnDbHandle object, ZnFileError error) {
  if (!lost_.insert(object.value).second) return;
  error.object = object;
  losses_.push_back(std::move(error));
}

// What is damaged is met again; what was lost is not.
void ZnSalvage::beginReading() {
  lostBefore_ = lost_.size();
  notes_.clear();
}

std::vector<ZnFileError> ZnSalvage::told() const {
  std::vector<ZnFileError> all = losses_;
  all.insert(all.end(), notes_.begin(), notes_.end());
  return all;
}
