// What several commands share in reading what they are asked for, and the words for what is wrong with it.
#pragma once

#include <vector>

#include "exchange/center_commands.h"
#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

ZnString statusText(Quorl::ErrorStatus status);

// eNoDatabase, and a message, without a drawing.
Quorl::ErrorStatus workingDatabase(ZnRxCommandContext& context, ZnDbDatabase*& database);

// What a command begins with: the drawing it works on, and what it is asked for; eNoDatabase, eInvalidInput
// for a value of another kind.
template<class Wish>
Quorl::ErrorStatus begin(ZnRxCommandContext& context, ZnDbDatabase*& database, Wish& wish) {
  if (const Quorl::ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk)
    return status;
  std::string wrong;
  if (exchange::fromJson(context.arguments(), wish, wrong)) return Quorl::eOk;
  return context.fail(Quorl::eInvalidInput,
                      ZnString(L"the argument \"") + ZnString::fromUtf8(wrong) + L"\" is of another kind");
}

// Whether the last evaluation of the center object came to nothing.
bool hasEvaluationFailed(ZnDbObjectId centerObject);

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
