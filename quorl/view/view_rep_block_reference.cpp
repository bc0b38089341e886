#include "quorl/view/view_rep_block_reference.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/field_io.h"
#include "quorl/db/entity/viewport.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbViewRepBlockReference, ZnDbBlockReference, L"VIEWREP")

namespace {
constexpr std::int16_t kVersion = 1;
constexpr int kViewportCode = 330, kViewCode = 331;
} // namespace

ErrorStatus ZnDbViewRepBlockReference::setViewportId(ZnDbObjectId viewport) {
  if (!viewport.isNull() &&
      (!viewport.isDerivedFrom(ZnDbViewport::desc()) || (database() && viewport.database() != database())))
    return Quorl::eInvalidInput;
  assertWriteEnabled();
  link_.reset();
  viewportId_ = viewport;
  attachLinks();
  return Quorl::eOk;
}

void ZnDbViewRepBlockReference::setViewId(ZnDbObjectId view) {
  assertWriteEnabled();
  viewId_ = view;
}

ZnDbObjectId ZnDbViewRepBlockReference::ofViewport(ZnDbObjectId viewport) {
  if (viewport.isErased() || !viewport.isDerivedFrom(ZnDbViewport::desc())) return {};
  const ZnDbWatchLink* const first = viewport.slot()->watchers;
  const ZnDbWatchLink* link = first;
  while (link) {
    const ZnDbObjectId watcher = link->watcher;
    if (!watcher.isErased() && watcher.isDerivedFrom(desc()) &&
        static_cast<const ZnDbViewRepBlockReference*>(watcher.slot()->object)->viewportId_ == viewport)
      return watcher;
    link = link->next == first ? nullptr : link->next;
  }
  return {};
}

void ZnDbViewRepBlockReference::attachLinks() {
  ZnDbBlockReference::attachLinks();
  if (!link_ && !viewportId_.isNull() && !objectId().isNull() && !isErased())
    link_.emplace(objectId(), viewportId_);
}

void ZnDbViewRepBlockReference::detachLinks() {
  link_.reset();
  ZnDbBlockReference::detachLinks();
}

ErrorStatus ZnDbViewRepBlockReference::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbBlockReference::bdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeInt16(kVersion);
  filer.writeSoftPointerId(viewportId_);
  filer.writeSoftPointerId(viewId_);
  return filer.status();
}

ErrorStatus ZnDbViewRepBlockReference::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbBlockReference::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  viewportId_ = filer.readSoftPointerId();
  viewId_ = filer.readSoftPointerId();
  return filer.status();
}

ErrorStatus ZnDbViewRepBlockReference::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbBlockReference::tdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeSubclassMarker(className());
  if (!viewportId_.isNull()) filer.writeId(kViewportCode, viewportId_);
  if (!viewId_.isNull()) filer.writeId(kViewCode, viewId_);
  return filer.status();
}

ErrorStatus ZnDbViewRepBlockReference::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbBlockReference::tdocInFields(filer); status != Quorl::eOk) return status;
  return zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == kViewportCode) viewportId_ = item.id;
    if (item.code == kViewCode) viewId_ = item.id;
  });
}
