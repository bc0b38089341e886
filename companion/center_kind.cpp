#include "companion/center_kind.h"

namespace companion {

namespace {

constexpr const CenterKind* kKinds[] = {&kMarkKind, &kLineKind, &kExtensionKind, &kPatternKind};

} // namespace

std::span<const CenterKind* const> centerKinds() { return kKinds; }

const CenterKind* centerKindOf(ZnDbTorviType type) {
  for (const CenterKind* kind : kKinds)
    if (kind->type == type) return kind;
  return nullptr;
}

} // namespace companion
