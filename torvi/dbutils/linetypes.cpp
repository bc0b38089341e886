#include "torvi/dbutils/lyx_utils.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

ZnDbObjectId ZnTorviLyxUtils::getLineTypeByName(ZnDbDatabase* db, const ZnString& name) {
  ZnDbObjectId id;
  if (!db) return id;
  ZnDbHolder<ZnDbLinetypeTable> table(db->linetypeTableId());
  if (table.isOpen()) table->getIdAt(name, id);
  return id;
}

namespace {

// The linetype of that name, loaded from the style's file where the drawing has it not.
ZnDbObjectId presentOrLoaded(ZnDbDatabase* db, const ZnString& name) {
  ZnDbObjectId id = ZnTorviLyxUtils::getLineTypeByName(db, name);
  if (!id.isNull() || !db) return id;
  db->loadLineTypeFile(name, ZnTorviStyle::getLineTypeFileName());
  return ZnTorviLyxUtils::getLineTypeByName(db, name);
}

} // namespace

ErrorStatus ZnTorviLyxUtils::ensureCenterLinetypeLoaded(ZnDbDatabase* db) {
  if (!db) db = zndbHostApplicationServices()->workingDatabase();
  if (!db) return Quorl::eInvalidInput;
  return presentOrLoaded(db, ZnTorviStyle::getCenterLineTypeName()).isValid() ? Quorl::eOk
                                                                              : Quorl::eLinetypeNotLoaded;
}

ZnDbObjectId ZnTorviLyxUtils::getCenterLineTypeId(ZnDbDatabase* db) {
  return db ? presentOrLoaded(db, ZnTorviStyle::getCenterLineTypeName()) : ZnDbObjectId();
}

ZnDbObjectId ZnTorviLyxUtils::getContinuousLineTypeId(ZnDbDatabase* db) {
  return db ? presentOrLoaded(db, ZnTorviStyle::getCrossHairLineTypeName()) : ZnDbObjectId();
}

const ZnCmTransparency& ZnTorviLyxUtils::getByBlockTransparency() {
  static const ZnCmTransparency byBlock = [] {
    ZnCmTransparency value;
    value.setMethod(ZnCmTransparency::kByBlock);
    return value;
  }();
  return byBlock;
}
