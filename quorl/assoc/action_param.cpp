#include "quorl/assoc/action_param.h"

#include "quorl/db/core/field_io.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbAssocActionParam, ZnDbObject)

namespace {
constexpr std::int16_t kVersion = 1;
constexpr int kNameCode = 1;
} // namespace

void ZnDbAssocActionParam::setName(const ZnString& name) {
  assertWriteEnabled();
  name_ = name;
  if (ZnDbAssocAction* action = parentAction()) action->paramsChanged();
}

ZnDbAssocAction* ZnDbAssocActionParam::parentAction() const {
  const ZnDbObjectId id = ownerId();
  if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocAction::desc())) return nullptr;
  return static_cast<ZnDbAssocAction*>(id.slot()->object);
}

// The action groups its parameters by name, and leaves erased ones out.
void ZnDbAssocActionParam::attachLinks() {
  if (ZnDbAssocAction* action = parentAction()) action->paramsChanged();
}

void ZnDbAssocActionParam::detachLinks() { attachLinks(); }

ErrorStatus ZnDbAssocActionParam::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeAtom(name_.atom());
  return filer.status();
}

ErrorStatus ZnDbAssocActionParam::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  name_ = ZnString(filer.readAtom());
  return filer.status();
}

ErrorStatus ZnDbAssocActionParam::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writeString(kNameCode, name_);
  return filer.status();
}

ErrorStatus ZnDbAssocActionParam::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::tdocInFields(filer); status != Quorl::eOk) return status;
  return zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == kNameCode) name_ = item.text;
  });
}
