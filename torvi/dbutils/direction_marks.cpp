#include <functional>
#include <set>

#include "torvi/dbutils/lyx_utils.h"

namespace {

// By identity: the order of handles takes lines of two drawings for one.
struct BySlot {
  bool operator()(ZnDbObjectId a, ZnDbObjectId b) const { return std::less<>()(a.slot(), b.slot()); }
};

// Kept for the whole process until it is emptied; whoever marks lines unmarks them.
std::set<ZnDbObjectId, BySlot>& linesNotToKeepDirection() {
  static std::set<ZnDbObjectId, BySlot> ids;
  return ids;
}

} // namespace

void ZnTorviLyxUtils::markCenterLinesNotToKeepDirection(const ZnArray<ZnDbObjectId>& ids) {
  linesNotToKeepDirection().insert(ids.begin(), ids.end());
}

void ZnTorviLyxUtils::unmarkCenterLinesNotToKeepDirection() { linesNotToKeepDirection().clear(); }

bool ZnTorviLyxUtils::isCenterLineNotToKeepDirection(const ZnDbObjectId& id) {
  return linesNotToKeepDirection().count(id) != 0;
}
