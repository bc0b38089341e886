#include "quorl/assoc/geom_dependency.h"

#include "quorl/assoc/subent_path_io.h"
#include "quorl/db/core/field_io.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocGeomDependency, ZnDbAssocDependency, L"ASSOCGEOMDEPENDENCY")

namespace {
constexpr std::int16_t kVersion = 1;
constexpr int kTypeCode = 70, kIndexCode = 160;
} // namespace

void ZnDbAssocGeomDependency::setSubentId(const ZnDbSubentId& subent) {
  if (subent == subent_) return;
  assertWriteEnabled();
  subent_ = subent;
}

ErrorStatus ZnDbAssocGeomDependency::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbAssocDependency::bdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeInt16(kVersion);
  zndbWriteSubent(filer, subent_);
  return filer.status();
}

ErrorStatus ZnDbAssocGeomDependency::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbAssocDependency::bdocInFields(filer); status != Quorl::eOk)
    return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  subent_ = zndbReadSubent(filer);
  return filer.status();
}

ErrorStatus ZnDbAssocGeomDependency::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbAssocDependency::tdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeSubclassMarker(className());
  filer.writeInteger(kTypeCode, subent_.type());
  filer.writeInteger(kIndexCode, subent_.index());
  return filer.status();
}

ErrorStatus ZnDbAssocGeomDependency::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbAssocDependency::tdocInFields(filer); status != Quorl::eOk)
    return status;
  std::int64_t type = subent_.type(), index = subent_.index();
  const ErrorStatus status = zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == kTypeCode) type = item.integer;
    if (item.code == kIndexCode) index = item.integer;
  });
  if (type < ZnDb::kNullSubentType || type > ZnDb::kVertexSubentType) {
    filer.setStatus(Quorl::eFileDamaged);
    return filer.status();
  }
  subent_ = ZnDbSubentId(static_cast<ZnDb::SubentType>(type), index);
  return status;
}
