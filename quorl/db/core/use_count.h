// Who is needed: layers, linetypes and styles know how many live objects refer to them, so that one in use is
// not erased and one that is not can be purged, without a look through the drawing.
#pragma once

#include "quorl/db/core/object_id.h"

// Follows the ids in which an object names what it needs, from attachLinks to detachLinks.
class ZnDbUseCount {
public:
  bool isCounted() const { return counted_; }
  template<class... Ids> void attach(Ids... ids) {
    if (!counted_) (count(ids, 1), ...);
    counted_ = true;
  }
  template<class... Ids> void detach(Ids... ids) {
    if (counted_) (count(ids, -1), ...);
    counted_ = false;
  }
  // A setter puts another id in the place of one that may be counted.
  void exchange(ZnDbObjectId& place, ZnDbObjectId id) {
    if (counted_) {
      count(place, -1);
      count(id, 1);
    }
    place = id;
  }

private:
  static void count(ZnDbObjectId id, int change) {
    if (!id.isNull()) id.slot()->users += static_cast<std::uint32_t>(change);
  }
  bool counted_ = false;
};
