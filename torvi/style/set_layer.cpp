#include "torvi/style/set_layer.h"

using Quorl::ErrorStatus;

namespace {

const ZnString kDefaultCenterLayer(L"Center Lines");

struct LayerOverrides {
  bool enabled = false;
  ZnDbObjectId linetype; // null keeps the copied layer's
  ZnDbDatabase* linetypeDatabase = nullptr;
  ZnDb::LineWeight lineWeight = ZnDb::kLineWeight025;
  ZnCmColor color;
  ZnCmTransparency transparency;
};

LayerOverrides overrides;

ErrorStatus idOfLayer(const ZnDbDatabase* db, const ZnString& name, ZnDbObjectId& id) {
  ZnDbHolder<ZnDbLayerTable> table(db->layerTableId());
  return table.isOpen() ? table->getIdAt(name, id) : table.status();
}

} // namespace

ZnString ZnTorviSetLayer::currentLayer() {
  const ZnDbDatabase* db = zndbHostApplicationServices()->workingDatabase();
  if (!db) return kDefaultCenterLayer;
  ZnDbHolder<ZnDbLayerTableRecord> layer(db->clayer());
  ZnString name;
  if (!layer.isOpen() || layer->getName(name) != Quorl::eOk) return kDefaultCenterLayer;
  return name;
}

ZnString ZnTorviSetLayer::centerLayerName() {
  const ZnString name = ZnRxVariablesDictionary::get()->getString(L"CENTERLAYER");
  if (name.isEmpty()) return kDefaultCenterLayer;
  return name == L"." ? currentLayer() : name;
}

ErrorStatus ZnTorviSetLayer::getCenterLayerId(ZnDbDatabase* db, ZnDbObjectId& id) {
  if (!db) return Quorl::eNoDatabase;
  const ZnString name = centerLayerName();
  const ErrorStatus status = idOfLayer(db, name, id);
  return status == Quorl::eKeyNotFound ? createCenterLayer(name, id, db) : status;
}

ErrorStatus ZnTorviSetLayer::createCenterLayer(const ZnString& name, ZnDbObjectId& id, ZnDbDatabase* db) {
  ZnDbHolder<ZnDbLayerTableRecord> standard(ZnDbSymbolUtilities::layerZeroId(db));
  if (!standard.isOpen()) return standard.status();
  // The holder deletes the record on every way out before the table owns it.
  ZnDbHolder<ZnDbLayerTableRecord> layer(ZnDbLayerTableRecord::cast(standard->clone()));
  if (!layer.isOpen()) return layer.status();
  if (const ErrorStatus status = layer->setName(name); status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbLayerTable> table;
  if (const ErrorStatus status = table.openForWrite(db->layerTableId()); status != Quorl::eOk) return status;
  ZnDbObjectId added;
  if (const ErrorStatus status = table->add(added, layer.object()); status != Quorl::eOk) return status;
  layer.close();
  if (const ErrorStatus status = table->getIdAt(name, id); status != Quorl::eOk) return status;
  applyLayerOverrides(id);
  return Quorl::eOk;
}

void ZnTorviSetLayer::applyLayerOverrides(ZnDbObjectId layerId) {
  if (!overrides.enabled) return;
  ZnDbHolder<ZnDbLayerTableRecord> layer;
  if (layer.openForWrite(layerId) != Quorl::eOk) return;
  layer->setColor(overrides.color);
  // The drawing that the linetype belongs to may be gone: its id is looked at in that drawing only.
  if (overrides.linetypeDatabase == layerId.database() && overrides.linetype.isValid())
    layer->setLinetypeObjectId(overrides.linetype);
  if (layer->setLineWeight(overrides.lineWeight) == Quorl::eOk)
    layer->setTransparency(overrides.transparency);
}

ErrorStatus ZnTorviSetLayer::setCenterLayer(ZnDbEntity* entity) {
  ZnDbDatabase* db = entity->database();
  if (!db) db = zndbHostApplicationServices()->workingDatabase();
  ZnDbObjectId layerId;
  const ErrorStatus status = getCenterLayerId(db, layerId);
  return status == Quorl::eOk ? entity->setLayer(layerId, true, false) : status;
}

ErrorStatus ZnTorviSetLayer::setCenterLayer(const ZnDbObjectId& entityId) {
  ZnDbHolder<ZnDbEntity> entity;
  const ErrorStatus status = entity.openForWrite(entityId, false, true);
  return status == Quorl::eOk ? setCenterLayer(entity.object()) : status;
}

ErrorStatus zndbApplyTorviLayerOverrides(ZnDb::LineWeight lineWeight, const ZnDbObjectId& linetype,
                                         const ZnCmColor& color, const ZnCmTransparency& transparency) {
  if (!linetype.isValid() || !linetype.isDerivedFrom(ZnDbLinetypeTableRecord::desc()))
    return Quorl::eInvalidLinetypeId;
  overrides = {true, linetype, linetype.database(), lineWeight, color, transparency};
  return Quorl::eOk;
}

// It stays enabled on purpose, see the declaration.
ErrorStatus zndbClearTorviLayerOverrides() {
  overrides.linetype.setNull();
  overrides.linetypeDatabase = nullptr;
  overrides.enabled = true;
  return Quorl::eOk;
}

void forgetTorviLayerOverrides() { overrides = {}; }
