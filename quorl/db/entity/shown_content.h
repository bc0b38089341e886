// How much is seen of blocks that show other blocks: a dozen of them, each twice in the next, show more than
// anybody can draw. What is asked here costs time in proportion to the blocks' own entities.
#pragma once

#include <cstdint>

#include "quorl/db/core/object_id.h"
#include "quorl/ge/bound_block3d.h"

// The entities that are seen where the block is: its own, and those of the blocks that it shows, as often as
// it shows them. The largest number stands for it and all above.
std::uint64_t zndbShownCount(ZnDbObjectId block);
// The box of the block's visible content, in its coordinates. Exact as long as no shown block is turned:
// from one that is its box is taken. Empty for a block without extent.
ZnGeBoundBlock3d zndbShownBox(ZnDbObjectId block);

// Up to here extents are exact, and beyond from boxes.
inline constexpr std::uint64_t kMostShownExactly = 1'000'000;
// A picture of more is refused.
inline constexpr std::uint64_t kMostShownDrawn = 50'000'000;
