#include "companion/object_naming.h"

namespace companion {

ZnDbObjectId objectOf(ZnDbDatabase& database, const std::string& handle) {
  constexpr int kHexadecimalOnly = 2;
  ZnDbObjectId id;
  const ZnDbHandle number = ZnString::fromUtf8(handle).asZnDbHandle(kHexadecimalOnly);
  if (number.isNull() || database.getZnDbObjectId(id, false, number) != Quorl::eOk || id.isErased())
    return {};
  return id;
}

bool edgeOf(ZnDbDatabase& database, const exchange::Edge& edge, ZnDbFullSubentPath& path) {
  ZnArray<ZnDbObjectId> ids;
  for (const std::string& handle : edge.path) {
    const ZnDbObjectId id = objectOf(database, handle);
    if (!id.isDerivedFrom(ZnDbEntity::desc())) return false;
    ids.append(id);
  }
  if (ids.isEmpty()) return false;
  const ZnDbSubentId subent(ZnDb::kEdgeSubentType, edge.index);
  ZnDbHolder<ZnDbEntity> entity(ids.last());
  if (!entity.isOpen() || !entity->subentCurve(subent)) return false;
  path = ZnDbFullSubentPath(ids, subent);
  return true;
}

std::string nameOf(ZnDbObjectId object) { return handleText(object.handle()).utf8(); }

std::string pathText(const ZnDbCompoundObjectId& path) {
  ZnArray<ZnDbObjectId> ids;
  path.getFullPath(ids);
  std::string text;
  for (const ZnDbObjectId id : ids) text += (text.empty() ? "" : "/") + nameOf(id);
  return text;
}

} // namespace companion
