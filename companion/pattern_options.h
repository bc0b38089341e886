// What the pattern commands are told, and the builder that they make of it.
#pragma once

#include <optional>
#include <vector>

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

// Arguments: "type", "polar" or "linear"; "reference", an edge or the text "none", with "referencePick", a
// point on it; "full" and "centerMark". What is absent is left open.
Quorl::ErrorStatus readPatternOptions(ZnRxCommandContext& context, ZnDbDatabase& database,
                                      PatternOptions& options);

// The edges of the argument, each a circle or arc and given once.
Quorl::ErrorStatus roundEdgesOf(ZnRxCommandContext& context, ZnDbDatabase& database, const wchar_t* argument,
                                ZnArray<ZnDbEdgeRef>& edges);

// A builder as the user would have brought it there, auto fill included; result "added", how many edges that
// gave. Fails, with the reason, when the edges make no such pattern.
Quorl::ErrorStatus fillBuilder(ZnRxCommandContext& context, const ZnArray<ZnDbEdgeRef>& edges,
                               const PatternOptions& options, ZnCenterMarkPatternBuilder& builder);
Quorl::ErrorStatus setReference(ZnRxCommandContext& context, const PatternOptions& options,
                                ZnCenterMarkPatternBuilder& builder);
// Last, since the edges have their say on both; only a ring can have them.
Quorl::ErrorStatus setRingOptions(ZnRxCommandContext& context, const PatternOptions& options,
                                  ZnCenterMarkPatternBuilder& builder);
void tellAdded(ZnRxCommandContext& context, const ZnCenterMarkPatternBuilder& builder);

} // namespace companion
