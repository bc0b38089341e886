#include "torvi/centerline/direction_marks.h"

#include <functional>
#include <set>

namespace torvi {

namespace {

// By identity: the order of handles takes lines of two drawings for one.
struct BySlot {
  bool operator()(ZnDbObjectId a, ZnDbObjectId b) const { return std::less<>()(a.slot(), b.slot()); }
};

// Kept for the whole process until it is emptied; whoever marks lines unmarks them.
std::set<ZnDbObjectId, BySlot>& marked() {
  static std::set<ZnDbObjectId, BySlot> lines;
  return lines;
}

} // namespace

void markNotToKeepDirection(const ZnArray<ZnDbObjectId>& lines) {
  marked().insert(lines.begin(), lines.end());
}

void unmarkAllNotToKeepDirection() { marked().clear(); }

bool isNotToKeepDirection(ZnDbObjectId line) { return marked().count(line) != 0; }

} // namespace torvi
