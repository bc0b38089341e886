// Entities of a block open for write, each with a draft of what it is to become. An evaluation works on the
// drafts and writes those entities alone that come out different: one that finds nothing new leaves no trace.
#pragma once

#include <memory>
#include <vector>

#include "torvi/host/database.h"

namespace torvi {

class EntityDrafts {
public:
  EntityDrafts() = default;
  EntityDrafts(const EntityDrafts&) = delete;
  EntityDrafts& operator=(const EntityDrafts&) = delete;
  ~EntityDrafts();

  // Opens the entities of the ids, on locked layers too, and drafts them as they are. The status is that of
  // the first that does not open.
  Quorl::ErrorStatus open(const ZnArray<ZnDbObjectId>& ids);

  // In the order of the ids; in no drawing, and not the caller's.
  const ZnArray<ZnDbEntity*>& drafts() const { return drafts_; }
  ZnDbEntity* entity(int index) const { return entities_[index]; }
  // Exactly, for lines and arcs; entities of other classes have no shape here.
  bool hasShapeOfDraft(int index) const;
  // Layer, color, linetype, weight, scale, transparency and visibility.
  void writeTraits();

private:
  ZnArray<ZnDbEntity*> entities_, drafts_;
  std::vector<std::unique_ptr<ZnDbEntity>> owned_;
};

} // namespace torvi
