// Walks what a drawing shows, through block references.
#pragma once

#include <functional>

#include "torvi/host/association.h"

namespace companion {

// One entity that shows: what leads to it, references first and itself last, and how its coordinates become
// those of the space.
struct VisibleEntity {
  const ZnDbEntity& entity;
  const ZnArray<ZnDbObjectId>& path;
  const ZnGeMatrix3d& toSpace;
};

// In drawing order, a reference's content at its place. Center objects are passed over: what they draw is
// theirs.
void visitVisibleEntities(ZnDbObjectId space, const std::function<void(const VisibleEntity&)>& visit);

} // namespace companion
