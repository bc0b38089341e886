// How paths to parts of entities stand in fields. Ids are soft pointers: depending on an object does not keep
// it, nor pull it along in a clone.
#pragma once

#include "quorl/db/core/field_walks.h"
#include "quorl/db/entity/subent.h"

// Whether the path is filed, or read as none: what is gone from it is in no file, and no clone's. Undo brings
// it back.
bool zndbIsFiledPath(const ZnDbCompoundObjectId& path, bool forUndo);

// The path of ids, outermost first. One of which a part could not be translated (it stayed behind in another
// drawing) is empty.
ZnDbCompoundObjectId zndbPathOf(const ZnArray<ZnDbObjectId>& ids);

// Binary: a count and the ids; text: one item an id.
template<> struct ZnDbFieldCodec<ZnDbCompoundObjectId> {
  using Raw = ZnDbCompoundObjectId;
  static const Raw& get(const Raw& value) { return value; }
  static void set(Raw& value, Raw&& raw) { value = std::move(raw); }
  template<class F> static void write(F& filer, const Raw& path) {
    const bool isFiled = zndbIsFiledPath(path, filer.kind() == ZnDbFiler::kUndo);
    filer.writeInt32(isFiled ? static_cast<std::int32_t>(path.pathIds().size()) + 1 : 0);
    if (!isFiled) return;
    for (const ZnDbObjectId id : path.pathIds()) filer.writeSoftPointerId(id);
    filer.writeSoftPointerId(path.leafId());
  }
  template<class F> static void read(F& filer, Raw& path) {
    ZnArray<ZnDbObjectId> ids;
    for (int count = filer.readCount(); count > 0 && filer.status() == Quorl::eOk; --count)
      ids.append(filer.readSoftPointerId());
    path = zndbPathOf(ids);
  }
  static void writeText(ZnDbTdocFiler& filer, int code, const Raw& path) {
    if (!zndbIsFiledPath(path, false)) return;
    for (const ZnDbObjectId id : path.pathIds()) filer.writeId(code, id);
    filer.writeId(code, path.leafId());
  }
  static bool readText(ZnDbTdocItems& items, int code, Raw& path) {
    ZnArray<ZnDbObjectId> ids;
    while (const ZnDbTdocItem* item = items.next(code)) ids.append(item->id);
    path = zndbPathOf(ids);
    return true;
  }
  static void show(ZnDbFieldVisitor& visitor, ZnDbField field, const Raw& path) {
    ZnArray<ZnDbObjectId> ids;
    path.getFullPath(ids);
    for (ZnDbObjectId id : ids) visitor.visit(field, id);
  }
};

// An edge or vertex by its lasting index.
template<class Walk> void zndbDescribeSubent(Walk& walk, int typeCode, ZnDbSubentId& subent) {
  constexpr int kIndexCode = 160;
  ZnDb::SubentType type = subent.type();
  std::int64_t index = subent.index();
  walk.field(typeCode, L"sub-entity type", zndbAs<std::int8_t>(type),
             ZnDbRule::between(ZnDb::kNullSubentType, ZnDb::kVertexSubentType));
  walk.field(kIndexCode, L"sub-entity index", index);
  if constexpr (Walk::kReads) subent = ZnDbSubentId(type, index);
}
