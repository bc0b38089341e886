#include "torvi/core/action_body_base_filer.h"

#include "torvi/core/action_body_base.h"

using Quorl::ErrorStatus;

namespace {

constexpr int kVersion = 0;
constexpr int kVersionCode = 90;
// One marker for the whole family, so that a class of it can change its place in the family.
constexpr const wchar_t* kMarker = L"ZnDbTorviActionBody";

} // namespace

ErrorStatus ZnDbTorviActionBodyBaseFiler::bdocOutFields(ZnDbFiler& filer) const {
  // The host's own level of a body is the object level.
  if (const ErrorStatus status = body_->ZnDbObject::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  return filer.status();
}

ErrorStatus ZnDbTorviActionBodyBaseFiler::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = body_->ZnDbObject::bdocInFields(filer); status != Quorl::eOk) return status;
  if (filer.readInt16() != kVersion) return Quorl::eNewerVersion;
  return filer.status();
}

ErrorStatus ZnDbTorviActionBodyBaseFiler::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = body_->ZnDbObject::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(kMarker);
  if (filer.status() != Quorl::eOk) return filer.status();
  filer.writeInteger(kVersionCode, kVersion);
  return filer.status();
}

ErrorStatus ZnDbTorviActionBodyBaseFiler::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = body_->ZnDbObject::tdocInFields(filer); status != Quorl::eOk) return status;
  if (!filer.atSubclassData(kMarker)) return filer.status();
  ZnDbTdocItem item;
  if (const ErrorStatus status = filer.readItem(item); status != Quorl::eOk) return status;
  if (item.code != kVersionCode) {
    filer.pushBackItem();
    return Quorl::eUnexpectedGroupCode;
  }
  return item.integer == kVersion ? filer.status() : Quorl::eNewerVersion;
}
