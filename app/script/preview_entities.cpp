#include "app/script/preview_entities.h"

#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

namespace app {

namespace {

ZnGePoint3d pointOf(const ZnRxCommandValue& value) {
  const ZnRxCommandValue::Array& items = value.items();
  return items.size() == 3 ? ZnGePoint3d(items[0].asDouble(), items[1].asDouble(), items[2].asDouble())
                           : ZnGePoint3d();
}

std::unique_ptr<ZnDbEntity> entityOf(const ZnRxCommandValue& curve) {
  const auto radians = [&](const wchar_t* name) { return curve.at(name).asDouble() * ZnGe::kPi / 180.0; };
  if (curve.at(L"type").asString() == L"line")
    return std::make_unique<ZnDbLine>(pointOf(curve.at(L"start")), pointOf(curve.at(L"end")));
  return std::make_unique<ZnDbArc>(pointOf(curve.at(L"center")), pointOf(curve.at(L"normal")).asVector(),
                                   curve.at(L"radius").asDouble(), radians(L"startAngle"),
                                   radians(L"endAngle"));
}

ZnDbObjectId recordNamed(ZnDbObjectId tableId, const ZnString& name) {
  ZnDbHolder<ZnDbSymbolTable> table(tableId);
  ZnDbObjectId id;
  if (table.isOpen()) table->getIdAt(name, id);
  return id;
}

} // namespace

PreviewEntities::PreviewEntities(const ZnDbDatabase& drawing, const ZnRxCommandValue& preview) {
  for (const ZnRxCommandValue& curve : preview.at(L"curves").items()) {
    ZnDbEntity& entity = *held_.emplace_back(entityOf(curve));
    const ZnDbObjectId layer = recordNamed(drawing.layerTableId(), curve.at(L"layer").asString());
    entity.setLayer(layer.isNull() ? scratch_.layerZero() : layer, true);
    const ZnDbObjectId dashes = linetype(drawing, preview, curve.at(L"linetype").asString());
    if (!dashes.isNull()) entity.setLinetype(dashes, true);
    entity.setLinetypeScale(curve.at(L"linetypeScale").asDouble(1.0), true);
  }
}

ZnDbObjectId PreviewEntities::linetype(const ZnDbDatabase& drawing, const ZnRxCommandValue& preview,
                                       const ZnString& name) {
  ZnDbObjectId id = recordNamed(drawing.linetypeTableId(), name);
  if (id.isNull()) id = recordNamed(scratch_.linetypeTableId(), name);
  if (!id.isNull()) return id;
  for (const ZnRxCommandValue& told : preview.at(L"linetypes").items()) {
    if (!(told.at(L"name").asString() == name)) continue;
    ZnDbHolder<ZnDbLinetypeTableRecord> record(new ZnDbLinetypeTableRecord);
    const ZnRxCommandValue::Array& dashes = told.at(L"dashes").items();
    record->setName(name);
    record->setDashCount(static_cast<int>(dashes.size()));
    for (size_t i = 0; i < dashes.size(); ++i)
      record->setDashLengthAt(static_cast<int>(i), dashes[i].asDouble());
    record->setIsScaledToFit(told.at(L"scaledToFit").asBool());
    ZnDbHolder<ZnDbLinetypeTable> table;
    if (table.openForWrite(scratch_.linetypeTableId()) == Quorl::eOk) table->add(id, record.object());
  }
  return id;
}

std::vector<const ZnDbEntity*> PreviewEntities::entities() const {
  std::vector<const ZnDbEntity*> entities;
  for (const auto& entity : held_) entities.push_back(entity.get());
  return entities;
}

} // namespace app
