// A drawing view of model geometry: its block holds the projected edges, a viewport on the sheet shows it.
#pragma once

#include <optional>

#include "quorl/db/core/watch_link.h"
#include "quorl/db/entity/block_reference.h"

class ZnDbViewRepBlockReference : public ZnDbBlockReference {
  ZNRX_DECLARE_MEMBERS(ZnDbViewRepBlockReference)

public:
  ZnDbViewRepBlockReference() = default;
  ZnDbViewRepBlockReference(const ZnGePoint3d& position, ZnDbObjectId blockRecord)
      : ZnDbBlockReference(position, blockRecord) {}

  // The viewport that shows the view; null for one that stands on the sheet itself. The viewport knows its
  // view through a link. eInvalidInput for an id that is no viewport of this drawing.
  ZnDbObjectId viewportId() const { return viewportId_; }
  Quorl::ErrorStatus setViewportId(ZnDbObjectId viewport);
  // The object that says how the view is taken; null for a view that is just drawn.
  ZnDbObjectId viewId() const { return viewId_; }
  void setViewId(ZnDbObjectId view);
  // The view that names the viewport; null for a plain viewport.
  static ZnDbObjectId ofViewport(ZnDbObjectId viewport);

  ZNDB_DECLARE_FIELDS
  void attachLinks() override;
  void detachLinks() override;

private:
  ZnDbObjectId viewportId_, viewId_;
  std::optional<ZnDbWatchLink> link_;
};
