// The box of what a space shows.
#pragma once

#include "interchange/draw/page_fit.h"
#include "interchange/draw/trait_resolver.h"

#include <optional>
#include <vector>

class ZnDbEntity;

namespace interchange {

// Of the visible entities on shown layers, and of the extra ones, seen from above; nothing when there are
// none.
std::optional<Extent> shownExtents(TraitResolver& resolver, ZnDbObjectId space,
                                   const std::vector<const ZnDbEntity*>& extra);

} // namespace interchange
