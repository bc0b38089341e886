// What several commands share in reading what they are asked for, and the words for what is wrong with it.
#pragma once

#include <vector>

#include "exchange/center_commands.h"
#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

ZnString statusText(Quorl::ErrorStatus status);

// The arguments as the command takes them; eInvalidInput for a value of another kind.
template<class Wish> Quorl::ErrorStatus readWish(ZnRxCommandContext& context, Wish& wish) {
  std::string wrong;
  if (exchange::fromJson(context.arguments(), wish, wrong)) return Quorl::eOk;
  return context.fail(Quorl::eInvalidInput,
                      ZnString(L"the argument \"") + ZnString::fromUtf8(wrong) + L"\" is of another kind");
}

// A circle or arc that is more than a point.
bool isRound(const ZnDbEdgeRef& edge);

// The edges in the drawing, see object_naming.h; at least one. eNoInputEdges, eInvalidInput.
Quorl::ErrorStatus edgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                           const std::vector<exchange::Edge>& edges, std::vector<ZnDbFullSubentPath>& paths);

// The center objects of the handles; at least one. eNothingToDo, eInvalidInput.
Quorl::ErrorStatus centerObjectsOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                                   const std::vector<std::string>& handles,
                                   std::vector<ZnDbObjectId>& objects);

} // namespace companion
