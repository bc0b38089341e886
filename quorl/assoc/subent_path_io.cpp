#include "quorl/assoc/subent_path_io.h"

using Quorl::ErrorStatus;

void zndbWritePath(ZnDbFiler& filer, const ZnDbCompoundObjectId& path) {
  if (path.isEmpty()) return filer.writeInt32(0);
  filer.writeInt32(static_cast<std::int32_t>(path.pathIds().size()) + 1);
  for (const ZnDbObjectId id : path.pathIds()) filer.writeSoftPointerId(id);
  filer.writeSoftPointerId(path.leafId());
}

ErrorStatus zndbReadPath(ZnDbFiler& filer, ZnDbCompoundObjectId& path) {
  ZnArray<ZnDbObjectId> ids;
  for (int count = filer.readCount(); count > 0 && filer.status() == Quorl::eOk; --count)
    ids.append(filer.readSoftPointerId());
  if (filer.status() == Quorl::eOk) path = zndbPathOf(ids);
  return filer.status();
}

void zndbWriteSubent(ZnDbFiler& filer, const ZnDbSubentId& subent) {
  filer.writeInt8(static_cast<std::int8_t>(subent.type()));
  filer.writeInt64(subent.index());
}

ZnDbSubentId zndbReadSubent(ZnDbFiler& filer) {
  const std::int8_t type = filer.readInt8();
  const std::int64_t index = filer.readInt64();
  if (type < ZnDb::kNullSubentType || type > ZnDb::kVertexSubentType) {
    filer.setStatus(Quorl::eFileDamaged);
    return {};
  }
  return ZnDbSubentId(static_cast<ZnDb::SubentType>(type), index);
}

void zndbWritePath(ZnDbTdocFiler& filer, int code, const ZnDbCompoundObjectId& path) {
  for (const ZnDbObjectId id : path.pathIds()) filer.writeId(code, id);
  if (!path.isEmpty()) filer.writeId(code, path.leafId());
}

ZnDbCompoundObjectId zndbPathOf(const ZnArray<ZnDbObjectId>& ids) {
  ZnDbCompoundObjectId path;
  if (ids.isEmpty() || ids.contains(ZnDbObjectId())) return path;
  ZnArray<ZnDbObjectId> above = ids;
  above.removeLast();
  path.set(ids.last(), above);
  return path;
}
