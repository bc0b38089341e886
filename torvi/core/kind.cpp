#include "torvi/core/kind.h"

#include <algorithm>
#include <vector>

namespace torvi {

namespace {
std::vector<const Kind*> registered;
}

std::span<const Kind* const> kinds() { return registered; }

const Kind* kindOfType(ZnDbTorviType type) {
  for (const Kind* kind : registered)
    if (kind->type == type) return kind;
  return nullptr;
}

// Asked dozens of times in one evaluation: most bodies are found at the first step.
const Kind* kindOfClass(const ZnRxClass* bodyClass) {
  for (const ZnRxClass* cls = bodyClass; cls; cls = cls->parent())
    for (const Kind* kind : registered)
      if (kind->bodyClass() == cls) return kind;
  return nullptr;
}

const Kind* kindOfBody(ZnDbObjectId bodyId) {
  return bodyId.isValid() ? kindOfClass(bodyId.objectClass()) : nullptr;
}

void registerKind(const Kind& kind) {
  if (std::find(registered.begin(), registered.end(), &kind) == registered.end()) registered.push_back(&kind);
}

void forgetKinds() { registered.clear(); }

} // namespace torvi
