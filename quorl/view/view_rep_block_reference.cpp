#include "quorl/view/view_rep_block_reference.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/entity/viewport.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbViewRepBlockReference, ZnDbBlockReference, L"VIEWREP")

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

template<class Walk> void ZnDbViewRepBlockReference::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"viewport", viewportId_, {ZnDbViewport::desc()});
  walk.id(ZnReferenceKind::kSoftPointer, 331, L"view", viewId_);
}

ZNDB_DEFINE_FIELDS(ZnDbViewRepBlockReference, ZnDbBlockReference)
