// An order of ids for sets and maps that may hold those of several drawings.
#pragma once

#include <functional>

#include "torvi/host/database.h"

namespace torvi {

// By identity: the order of handles takes the same handle in two drawings for one object. It is another on
// each run, so nothing that is written may follow it.
struct ByIdentity {
  bool operator()(ZnDbObjectId a, ZnDbObjectId b) const { return std::less<>()(a.slot(), b.slot()); }
};

} // namespace torvi
