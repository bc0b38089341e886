#include "app/script/preview_entities.h"

#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

namespace app {

namespace {

ZnGePoint3d pointOf(const exchange::Point& value) { return {value[0], value[1], value[2]}; }

std::unique_ptr<ZnDbEntity> entityOf(const exchange::PreviewCurve& curve) {
  const exchange::Shape& shape = curve.shape;
  if (shape.type == "line") return std::make_unique<ZnDbLine>(pointOf(shape.start), pointOf(shape.end));
  const auto radians = [](const std::optional<double>& degrees) {
    return degrees.value_or(0.0) * ZnGe::kPi / 180.0;
  };
  return std::make_unique<ZnDbArc>(pointOf(shape.center.value_or(exchange::Point{})),
                                   pointOf(curve.normal.value_or(exchange::Point{})).asVector(),
                                   shape.radius.value_or(0.0), radians(shape.startAngle),
                                   radians(shape.endAngle));
}

ZnDbObjectId recordNamed(ZnDbObjectId tableId, const std::string& name) {
  ZnDbHolder<ZnDbSymbolTable> table(tableId);
  ZnDbObjectId id;
  if (table.isOpen()) table->getIdAt(ZnString::fromUtf8(name), id);
  return id;
}

} // namespace

PreviewEntities::PreviewEntities(const ZnDbDatabase& drawing, const exchange::PreviewOutcome& preview) {
  for (const exchange::PreviewCurve& curve : preview.curves) {
    ZnDbEntity& entity = *held_.emplace_back(entityOf(curve));
    const ZnDbObjectId layer = recordNamed(drawing.layerTableId(), curve.layer);
    entity.setLayer(layer.isNull() ? scratch_.layerZero() : layer, true);
    const ZnDbObjectId dashes = linetype(drawing, preview, curve.linetype);
    if (!dashes.isNull()) entity.setLinetype(dashes, true);
    entity.setLinetypeScale(curve.linetypeScale, true);
  }
}

ZnDbObjectId PreviewEntities::linetype(const ZnDbDatabase& drawing, const exchange::PreviewOutcome& preview,
                                       const std::string& name) {
  ZnDbObjectId id = recordNamed(drawing.linetypeTableId(), name);
  if (id.isNull()) id = recordNamed(scratch_.linetypeTableId(), name);
  if (!id.isNull()) return id;
  for (const exchange::PreviewLinetype& told : preview.linetypes) {
    if (told.name != name) continue;
    ZnDbHolder<ZnDbLinetypeTableRecord> record(new ZnDbLinetypeTableRecord);
    record->setName(ZnString::fromUtf8(name));
    record->setDashCount(static_cast<int>(told.dashes.size()));
    for (size_t i = 0; i < told.dashes.size(); ++i)
      record->setDashLengthAt(static_cast<int>(i), told.dashes[i]);
    record->setIsScaledToFit(told.scaledToFit);
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
