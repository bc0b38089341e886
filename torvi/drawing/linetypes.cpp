#include "torvi/drawing/linetypes.h"

#include "torvi/style/style.h"

using Quorl::ErrorStatus;

namespace torvi {

namespace {

ZnDbObjectId presentOrLoaded(ZnDbDatabase* db, const ZnString& name) {
  const ZnDbObjectId id = linetypeByName(db, name);
  if (!id.isNull() || !db) return id;
  db->loadLineTypeFile(name, ZnTorviStyle::getLineTypeFileName());
  return linetypeByName(db, name);
}

} // namespace

ZnDbObjectId linetypeByName(ZnDbDatabase* db, const ZnString& name) {
  ZnDbObjectId id;
  if (!db) return id;
  ZnDbHolder<ZnDbLinetypeTable> table(db->linetypeTableId());
  if (table.isOpen()) table->getIdAt(name, id);
  return id;
}

ZnDbObjectId centerLinetypeId(ZnDbDatabase* db) {
  return db ? presentOrLoaded(db, ZnTorviStyle::getCenterLineTypeName()) : ZnDbObjectId();
}

ZnDbObjectId crossHairLinetypeId(ZnDbDatabase* db) {
  return db ? presentOrLoaded(db, ZnTorviStyle::getCrossHairLineTypeName()) : ZnDbObjectId();
}

ErrorStatus ensureCenterLinetypeLoaded(ZnDbDatabase* db) {
  if (!db) db = zndbHostApplicationServices()->workingDatabase();
  if (!db) return Quorl::eInvalidInput;
  return centerLinetypeId(db).isValid() ? Quorl::eOk : Quorl::eLinetypeNotLoaded;
}

const ZnCmTransparency& byBlockTransparency() {
  static const ZnCmTransparency byBlock = [] {
    ZnCmTransparency value;
    value.setMethod(ZnCmTransparency::kByBlock);
    return value;
  }();
  return byBlock;
}

} // namespace torvi
