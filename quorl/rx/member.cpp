#include "quorl/rx/member.h"

#include "quorl/rx/member_collection.h"

ZNRX_DEFINE_ABSTRACT(ZnRxMember, ZnRxObject)

const ZnRxClass* ZnRxMember::owner() const { return collection_ ? collection_->owner() : nullptr; }

ZnString ZnRxMember::localizedName() const {
  const auto* attribute = attributes_.get<ZnRxLocalizedNameAttribute>();
  const ZnString own = attribute ? text(attribute->textNumber()) : ZnString();
  return own.isEmpty() ? name_ : own;
}

ZnString ZnRxMember::description() const {
  const auto* attribute = attributes_.get<ZnRxDescriptionAttribute>();
  return attribute ? text(attribute->textNumber()) : ZnString();
}

ZnString ZnRxMember::text(unsigned number) const {
  ZnString loaded;
  if (collection_) loaded.loadString(collection_->resources(), number);
  return loaded;
}
