#include "quorl/rx/attributes.h"

#include <algorithm>

ZNRX_DEFINE_ABSTRACT(ZnRxAttribute, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnRxLocalizedNameAttribute, ZnRxAttribute)
ZNRX_DEFINE_ABSTRACT(ZnRxDescriptionAttribute, ZnRxAttribute)
ZNRX_DEFINE_ABSTRACT(ZnRxUiPlacementAttribute, ZnRxAttribute)
ZNRX_DEFINE_ABSTRACT(ZnRxUnitTypeAttribute, ZnRxAttribute)
ZNRX_DEFINE_CLASS(ZnRxGenerateDynamicPropertiesAttribute, ZnRxAttribute)

void ZnRxAttributeCollection::add(std::unique_ptr<ZnRxAttribute> attribute) {
  if (!attribute) return;
  std::erase_if(attributes_, [&](const auto& held) { return held->isA() == attribute->isA(); });
  attributes_.push_back(std::move(attribute));
}

const ZnRxAttribute* ZnRxAttributeCollection::get(const ZnRxClass* attributeClass) const {
  const auto found = std::find_if(attributes_.begin(), attributes_.end(),
                                  [&](const auto& held) { return held->isKindOf(attributeClass); });
  return found == attributes_.end() ? nullptr : found->get();
}
