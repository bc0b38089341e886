// Finds what lies near a point of the current space without looking at all of it.
#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/ge/bound_block3d.h"
#include "quorl/ge/place_index.h"

namespace app {

// Built at the first question; from then on it hears what changes and looks at that alone.
class SpaceIndex : public ZnDbDatabaseReactor {
public:
  explicit SpaceIndex(ZnDbDatabase& database);
  ~SpaceIndex() override;
  SpaceIndex(const SpaceIndex&) = delete;
  SpaceIndex& operator=(const SpaceIndex&) = delete;

  // Entities of the space, nearest first by their boxes, until the visitor gives false. The distance is from
  // the box, and 0 for an entity without one. The visitor must not change the drawing.
  using Visitor = std::function<bool(ZnDbObjectId id, double distance)>;
  void visitNearest(const ZnGePoint3d& point, const Visitor& visitor);
  // Of the box round all entities; 0 for an empty space.
  double diagonal();

  void objectAppended(ZnDbDatabase*, const ZnDbObject* object) override { note(object); }
  void objectModified(ZnDbDatabase*, const ZnDbObject* object) override { note(object); }
  void objectErased(ZnDbDatabase*, const ZnDbObject* object, bool) override { note(object); }

private:
  struct Placed {
    ZnDbObjectId id;
    ZnGeBoundBlock3d extents;
  };

  void note(const ZnDbObject* object);
  void bringUpToDate();
  void build();
  void place(ZnDbObjectId id);
  void remove(ZnDbObjectId id);
  std::vector<ZnDbObjectId> touched() const;

  ZnDbDatabase& database_;
  ZnDbObjectId space_;
  bool isBuilt_ = false; // at the first question
  ZnGePlaceIndex3d index_;
  std::vector<Placed> placed_;                    // by number in the index
  std::unordered_map<ZnDbObjectId, int> numbers_; // of what stands in the index
  std::unordered_set<ZnDbObjectId> unboxed_;
  std::vector<ZnDbObjectId> changed_;
};

} // namespace app
