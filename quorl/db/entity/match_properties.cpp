#include "quorl/db/entity/match_properties.h"

#include "quorl/db/entity/entity.h"

ZNRX_DEFINE_ABSTRACT(ZnDbMatchProperties, ZnRxObject)

namespace {

class EntityMatchProperties : public ZnDbMatchProperties {
public:
  void copyProperties(const ZnDbObject* source, ZnDbObject* target, std::uint32_t flags) const override {
    const ZnDbEntity* from = ZnDbEntity::cast(source);
    ZnDbEntity* to = ZnDbEntity::cast(target);
    if (!from || !to) return;
    // Layers and linetypes of another drawing are none of the target's; its setters refuse them.
    if (flags & kColor) to->setColor(from->color());
    if (flags & kLayer) to->setLayer(from->layerId());
    if (flags & kLinetype) to->setLinetype(from->linetypeId());
    if (flags & kLinetypeScale) to->setLinetypeScale(from->linetypeScale());
    if (flags & kLineWeight) to->setLineWeight(from->lineWeight());
    if (flags & kTransparency) to->setTransparency(from->transparency());
  }
};

// Hung up with the library, so that every entity answers from the start.
const bool attached = [] {
  static EntityMatchProperties ofEntities;
  ZnDbEntity::rxInit();
  ZnDbMatchProperties::rxInit();
  ZnDbEntity::desc()->addX(ZnDbMatchProperties::desc(), &ofEntities);
  return true;
}();

} // namespace
