// The arguments that several commands share, and the words for what is wrong with them.
#pragma once

#include <vector>

#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

ZnString statusText(Quorl::ErrorStatus status);

// A circle or arc that is more than a point.
bool isRound(const ZnDbEdgeRef& edge);

// The edges of the argument of that name, see object_naming.h; at least one. eNoInputEdges, eInvalidInput.
Quorl::ErrorStatus edgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                           std::vector<ZnDbFullSubentPath>& paths, const wchar_t* argument = L"edges");

// The center objects of the argument "objects"; at least one. eNothingToDo, eInvalidInput.
Quorl::ErrorStatus centerObjectsOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                                   std::vector<ZnDbObjectId>& objects);

} // namespace companion
