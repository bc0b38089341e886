#include "companion/object_naming.h"

namespace companion {

ZnDbObjectId objectOf(ZnDbDatabase& database, const ZnRxCommandValue& handle) {
  constexpr int kHexadecimalOnly = 2;
  ZnDbObjectId id;
  const ZnDbHandle number = handle.asString().asZnDbHandle(kHexadecimalOnly);
  if (number.isNull() || database.getZnDbObjectId(id, false, number) != Quorl::eOk || id.isErased())
    return {};
  return id;
}

bool edgeOf(ZnDbDatabase& database, const ZnRxCommandValue& edge, ZnDbFullSubentPath& path) {
  ZnArray<ZnDbObjectId> ids;
  for (const ZnRxCommandValue& handle : edge.at(L"path").items()) {
    const ZnDbObjectId id = objectOf(database, handle);
    if (!id.isDerivedFrom(ZnDbEntity::desc())) return false;
    ids.append(id);
  }
  if (ids.isEmpty()) return false;
  const ZnDbSubentId subent(ZnDb::kEdgeSubentType, edge.at(L"index").asInt());
  ZnDbHolder<ZnDbEntity> entity(ids.last());
  if (!entity.isOpen() || !entity->subentCurve(subent)) return false;
  path = ZnDbFullSubentPath(ids, subent);
  return true;
}

ZnString pathText(const ZnDbCompoundObjectId& path) {
  ZnArray<ZnDbObjectId> ids;
  path.getFullPath(ids);
  ZnString text;
  for (const ZnDbObjectId id : ids) {
    if (!text.isEmpty()) text += L"/";
    text += handleText(id.handle());
  }
  return text;
}

} // namespace companion
