// What the pattern commands are told, and the builder that they make of it.
#pragma once

#include <optional>
#include <vector>

#include "exchange/center_commands.h"
#include "torvi/host/association.h"
#include "torvi/host/commands.h"
#include "torvi/pattern/builder.h"

namespace companion {

struct PatternOptions {
  CenterMarkPatternType type = kCenterPatternNone; // none: the edges decide
  ZnDbEdgeRef reference;
  bool clearsReference = false; // told that there is to be none
  std::optional<ZnGePoint3d> referencePick;
  std::optional<bool> full, centerMark; // nothing: the edges decide; as it is
};

Quorl::ErrorStatus readPatternOptions(ZnRxCommandContext& context, ZnDbDatabase& database,
                                      const exchange::PatternWish& wish, PatternOptions& options);

// At least one, each a circle or arc and given once.
Quorl::ErrorStatus roundEdgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                                const std::vector<exchange::Edge>& wanted, ZnArray<ZnDbEdgeRef>& edges);

// A builder as the user would have brought it there, auto fill included. Fails, with the reason, when the
// edges make no such pattern.
Quorl::ErrorStatus fillBuilder(ZnRxCommandContext& context, const ZnArray<ZnDbEdgeRef>& edges,
                               const PatternOptions& options, ZnCenterMarkPatternBuilder& builder);
Quorl::ErrorStatus setReference(ZnRxCommandContext& context, const PatternOptions& options,
                                ZnCenterMarkPatternBuilder& builder);
// Last, since the edges have their say on both; only a ring can have them.
Quorl::ErrorStatus setRingOptions(ZnRxCommandContext& context, const PatternOptions& options,
                                  ZnCenterMarkPatternBuilder& builder);
// How many edges auto fill gave.
int addedEdges(const ZnCenterMarkPatternBuilder& builder);

} // namespace companion
