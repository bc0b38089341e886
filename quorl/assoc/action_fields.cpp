// How an action is filed, read and hung up again.
#include "quorl/assoc/action.h"

#include "quorl/assoc/action_body.h"
#include "quorl/assoc/action_param.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/field_io.h"

using Quorl::ErrorStatus;

namespace {

constexpr std::int16_t kVersion = 1;
constexpr int kStatusCode = 70, kBodyCode = 360, kDependencyCode = 361, kParamCode = 362;

bool isStatus(std::int64_t number) {
  return number >= kIsUpToDateAssocStatus && number <= kUnresolvedAssocStatus;
}

// For undo the erased ones count too: undoing brings them back.
bool isFiled(ZnDbObjectId id, bool forUndo) { return forUndo || !id.isErased(); }

void writeOwned(ZnDbFiler& filer, const std::vector<ZnDbObjectId>& ids) {
  const bool forUndo = filer.kind() == ZnDbFiler::kUndo;
  std::int32_t count = 0;
  for (const ZnDbObjectId id : ids) count += isFiled(id, forUndo) ? 1 : 0;
  filer.writeInt32(count);
  for (const ZnDbObjectId id : ids)
    if (isFiled(id, forUndo)) filer.writeHardOwnershipId(id);
}

void readOwned(ZnDbFiler& filer, std::vector<ZnDbObjectId>& ids) {
  ids.clear();
  const int count = filer.readCount();
  for (int i = 0; i < count && filer.status() == Quorl::eOk; ++i)
    if (const ZnDbObjectId id = filer.readHardOwnershipId(); !id.isNull()) ids.push_back(id);
}

} // namespace

ErrorStatus ZnDbAssocAction::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeInt8(static_cast<std::int8_t>(status_));
  filer.writeHardOwnershipId(bodyId_);
  writeOwned(filer, dependencies_);
  writeOwned(filer, params_);
  values_.bdocOut(filer);
  return filer.status();
}

ErrorStatus ZnDbAssocAction::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  const std::int8_t status = filer.readInt8();
  if (!isStatus(status)) filer.setStatus(Quorl::eFileDamaged);
  if (filer.status() != Quorl::eOk) return filer.status();
  status_ = static_cast<ZnDbAssocStatus>(status);
  bodyId_ = filer.readHardOwnershipId();
  readOwned(filer, dependencies_);
  readOwned(filer, params_);
  groupsAreStale_ = true;
  return values_.bdocIn(filer);
}

ErrorStatus ZnDbAssocAction::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(ZnDbAssocAction::className());
  filer.writeInteger(kStatusCode, status_);
  if (!bodyId_.isNull()) filer.writeId(kBodyCode, bodyId_);
  for (const ZnDbObjectId id : dependencies_)
    if (!id.isErased()) filer.writeId(kDependencyCode, id);
  for (const ZnDbObjectId id : params_)
    if (!id.isErased()) filer.writeId(kParamCode, id);
  values_.tdocOut(filer);
  return filer.status();
}

ErrorStatus ZnDbAssocAction::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::tdocInFields(filer); status != Quorl::eOk) return status;
  dependencies_.clear();
  params_.clear();
  values_ = {};
  groupsAreStale_ = true;
  ZnDbAssocValueParamList::TdocReader values(values_);
  return zndbReadTdocSection(filer, ZnDbAssocAction::className(), [&](const ZnDbTdocItem& item) {
    if (values.take(item)) return;
    if (item.code == kBodyCode) bodyId_ = item.id;
    if (item.code == kDependencyCode) dependencies_.push_back(item.id);
    if (item.code == kParamCode) params_.push_back(item.id);
    if (item.code != kStatusCode) return;
    if (isStatus(item.integer))
      status_ = static_cast<ZnDbAssocStatus>(item.integer);
    else
      filer.setStatus(Quorl::eFileDamaged);
  });
}

// The list of marked actions is not filed: it follows from the statuses.
void ZnDbAssocAction::attachLinks() {
  groupsAreStale_ = true;
  if (zndbIsToEvaluate(status_)) enterInNetwork();
}

void ZnDbAssocAction::loaded() { attachLinks(); }

void ZnDbAssocAction::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbObject::audit(faults, fix);
  const ZnString who = L"action " + handleText(handle());
  // What the action names must be there, of the class, and name the action as its owner.
  const auto isOwned = [&](ZnDbObjectId id, const ZnRxClass* cls) {
    return id.isValid() && (!cls || id.isDerivedFrom(cls)) && id.slot()->object->ownerId() == objectId();
  };
  const auto check = [&](std::vector<ZnDbObjectId>& ids, const ZnRxClass* cls, const wchar_t* what) {
    for (size_t i = 0; i < ids.size(); ++i) {
      if (isOwned(ids[i], cls)) continue;
      faults.push_back(who + L": " + what + L" " + handleText(ids[i].handle()) + L" is none of it");
      if (!fix) continue;
      assertWriteEnabled();
      ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(i--));
      groupsAreStale_ = true;
    }
  };
  check(dependencies_, ZnDbAssocDependency::desc(), L"dependency");
  check(params_, nullptr, L"parameter");
  if (!bodyId_.isNull() && !isOwned(bodyId_, nullptr)) {
    faults.push_back(who + L": its body is missing");
    if (fix) {
      assertWriteEnabled();
      bodyId_.setNull();
    }
  }
}
