// What the commands do differently for each kind of center object: one record a kind, in the source of its
// commands, and the list of them.
#pragma once

#include <span>

#include "exchange/center_commands.h"
#include "exchange/report.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/host/commands.h"

namespace companion {

struct CommandRow {
  const wchar_t* name;
  Quorl::ErrorStatus (*run)(ZnRxCommandContext&);
};

struct CenterKind {
  ZnDbTorviType type;
  std::span<const CommandRow> commands; // of its own
  // Adds to the report what only this kind has to tell.
  void (*describe)(const ZnDbTorviObjectWrapper& wrapper, exchange::ReportedCenter& told);
  // Ties the object to the edges of the wish, which it follows from now on, or changes nothing.
  Quorl::ErrorStatus (*reassociate)(ZnRxCommandContext& context, ZnDbDatabase& database,
                                    const exchange::CenterWish& wish, ZnDbObjectId centerObject);
};

extern const CenterKind kMarkKind, kLineKind, kExtensionKind, kPatternKind;

std::span<const CenterKind* const> centerKinds();
// Null for a kind that has no commands here.
const CenterKind* centerKindOf(ZnDbTorviType type);

} // namespace companion
