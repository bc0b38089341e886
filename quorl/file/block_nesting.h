// Whether the blocks of a drawing that was read stand in each other in a way that an end can be found to.
#pragma once

#include "quorl/file/file_error.h"

class ZnHandleIndex;

namespace Quorl {

// Of entities, those of nested blocks as often as they are repeated; ten times what the largest drawings
// show.
constexpr std::uint64_t kMostShownInFile = 100'000'000;

// Whoever draws, measures or explodes follows references into blocks and trusts that no block contains
// itself, that the way down is not too long for a stack, and that what repeats does not grow beyond all
// measure. False with the error, which names the block, where a file breaks that trust. All objects must be
// in.
bool checkBlockNesting(const ZnHandleIndex& index, ZnFileError& error);

} // namespace Quorl
