#include "quorl/assoc/path_fields.h"

ZnDbCompoundObjectId zndbPathOf(const ZnArray<ZnDbObjectId>& ids) {
  ZnDbCompoundObjectId path;
  if (ids.isEmpty() || ids.contains(ZnDbObjectId())) return path;
  ZnArray<ZnDbObjectId> above = ids;
  above.removeLast();
  path.set(ids.last(), above);
  return path;
}
