#include "quorl/assoc/subent_path_io.h"

using Quorl::ErrorStatus;

void zndbWritePath(ZnDbFiler& filer, const ZnDbCompoundObjectId& path) {
  if (path.isEmpty()) return filer.wrInt32(0);
  filer.wrInt32(static_cast<std::int32_t>(path.pathIds().size()) + 1);
  for (const ZnDbObjectId id : path.pathIds()) filer.wrSoftPointerId(id);
  filer.wrSoftPointerId(path.leafId());
}

ErrorStatus zndbReadPath(ZnDbFiler& filer, ZnDbCompoundObjectId& path) {
  ZnArray<ZnDbObjectId> ids;
  for (int count = filer.rdCount(); count > 0 && filer.status() == Quorl::eOk; --count)
    ids.append(filer.rdSoftPointerId());
  if (filer.status() == Quorl::eOk) path = zndbPathOf(ids);
  return filer.status();
}

void zndbWriteSubent(ZnDbFiler& filer, const ZnDbSubentId& subent) {
  filer.wrInt8(static_cast<std::int8_t>(subent.type()));
  filer.wrInt64(subent.index());
}

ZnDbSubentId zndbReadSubent(ZnDbFiler& filer) {
  const std::int8_t type = filer.rdInt8();
  const std::int64_t index = filer.rdInt64();
  if (type < ZnDb::kNullSubentType || type > ZnDb::kVertexSubentType) {
    filer.setStatus(Quorl::eFileDamaged);
    return {};
  }
  return ZnDbSubentId(static_cast<ZnDb::SubentType>(type), index);
}

void zndbWritePath(ZnDbTdocFiler& filer, int code, const ZnDbCompoundObjectId& path) {
  for (const ZnDbObjectId id : path.pathIds()) filer.wrId(code, id);
  if (!path.isEmpty()) filer.wrId(code, path.leafId());
}

ZnDbCompoundObjectId zndbPathOf(const ZnArray<ZnDbObjectId>& ids) {
  ZnDbCompoundObjectId path;
  if (ids.isEmpty() || ids.contains(ZnDbObjectId())) return path;
  ZnArray<ZnDbObjectId> above = ids;
  above.removeLast();
  path.set(ids.last(), above);
  return path;
}
