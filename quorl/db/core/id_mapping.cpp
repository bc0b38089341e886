#include "quorl/db/core/id_mapping.h"

bool ZnDbIdMapping::compute(ZnDbIdPair& pair) const {
  const auto found = index_.find(pair.key());
  if (found == index_.end()) return false;
  pair = pairs_[found->second];
  return true;
}

void ZnDbIdMapping::assign(const ZnDbIdPair& pair) {
  const auto [found, added] = index_.emplace(pair.key(), pairs_.size());
  if (added)
    pairs_.push_back(pair);
  else
    pairs_[found->second] = pair;
}

bool ZnDbIdMappingIter::getMap(ZnDbIdPair& pair) const {
  if (done()) return false;
  pair = mapping_.pairs()[at_];
  return true;
}
