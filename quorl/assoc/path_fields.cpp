#include "quorl/assoc/path_fields.h"

#include <algorithm>

bool zndbIsFiledPath(const ZnDbCompoundObjectId& path, bool forUndo) {
  if (path.isEmpty()) return false;
  const auto isFiled = [=](ZnDbObjectId id) { return Quorl::isFiledId(id, forUndo); };
  return isFiled(path.leafId()) && std::all_of(path.pathIds().begin(), path.pathIds().end(), isFiled);
}

ZnDbCompoundObjectId zndbPathOf(const ZnArray<ZnDbObjectId>& ids) {
  ZnDbCompoundObjectId path;
  if (ids.isEmpty() || ids.contains(ZnDbObjectId())) return path;
  ZnArray<ZnDbObjectId> above = ids;
  above.removeLast();
  path.set(ids.last(), above);
  return path;
}
