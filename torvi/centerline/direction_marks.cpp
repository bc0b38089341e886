#include "torvi/centerline/direction_marks.h"

#include <set>

#include "torvi/core/id_order.h"

namespace torvi {

namespace {

// Kept for the whole process until it is emptied; whoever marks lines unmarks them.
std::set<ZnDbObjectId, ByIdentity>& marked() {
  static std::set<ZnDbObjectId, ByIdentity> lines;
  return lines;
}

} // namespace

void markNotToKeepDirection(const ZnArray<ZnDbObjectId>& lines) {
  marked().insert(lines.begin(), lines.end());
}

void unmarkAllNotToKeepDirection() { marked().clear(); }

bool isNotToKeepDirection(ZnDbObjectId line) { return marked().count(line) != 0; }

void forgetDirectionMarksOf(const ZnDbDatabase& drawing) {
  std::erase_if(marked(), [&](ZnDbObjectId line) { return line.database() == &drawing; });
}

} // namespace torvi
