// A dependency ties an action to an object that it reads or writes, and hears when that object changes.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "quorl/assoc/assoc_status.h"
#include "quorl/db/core/object.h"
#include "quorl/db/core/watch_link.h"
#include "quorl/db/entity/subent.h"

class ZnDbAssocAction;

// Its owner is the action. It watches every object on the path to what it depends on: a moved block reference
// or viewport changes what is seen through it.
class ZnDbAssocDependency : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocDependency)

public:
  ZnDbAssocDependency();
  ~ZnDbAssocDependency() override;

  // What for. A read dependency marks the action when the object changes; one that only writes hears just of
  // erasing. order is kept for those who sort dependencies.
  bool isReadDependency() const { return isRead_; }
  bool isWriteDependency() const { return isWrite_; }
  int order() const { return order_; }
  void setIsReadDependency(bool isRead);
  void setIsWriteDependency(bool isWrite);
  void setOrder(int order);

  // On what. dependentOnObject is the first id of the path, which for a plain object is the object.
  ZnDbObjectId dependentOnObject() const { return target_.topId(); }
  const ZnDbCompoundObjectId& compoundObject() const { return target_; }
  bool isAttached() const { return !target_.isEmpty(); }
  // eNothingToDo when attached already, eInvalidInput for an empty path, for ids of another drawing or for an
  // object that no action may depend on. The object's ZnDbAssocDependencyPE may redirect it to another one.
  Quorl::ErrorStatus attachToObject(const ZnDbCompoundObjectId& target);
  Quorl::ErrorStatus detachFromObject(); // eNothingToDo when not attached

  // Unresolved when not attached, erased while anything on the path is, else up to date or changed since the
  // last evaluation of the action.
  ZnDbAssocStatus status() const;
  void setStatus(ZnDbAssocStatus status) { changed_ = zndbIsToEvaluate(status); }
  bool isErasedOrBroken() const;
  bool hasChanged() const { return changed_; } // since the last evaluation, erased or not

  // The dependency at an id; null for one that is erased, or whose class is not there.
  static ZnDbAssocDependency* live(ZnDbObjectId id) {
    return id.isErased() ? nullptr : cast(id.slot()->object);
  }
  // Null while it is in no action.
  ZnDbAssocAction* owningAction() const;
  // An object of the module's that goes with the dependency; owned, null for most.
  Quorl::ErrorStatus setDependencyBody(ZnDbObjectId body);

  ZNDB_DECLARE_FIELDS
  void attachLinks() override;
  void detachLinks() override;
  void watchedModified(const ZnDbObject* object) override;
  void watchedErased(const ZnDbObject* object, bool erasing) override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

private:
  void watch(ZnDbObjectId object);

  ZnDbCompoundObjectId target_;
  ZnDbObjectId bodyId_;
  int order_ = 0;
  bool isRead_ = false, isWrite_ = false;
  bool changed_ = false;
  // One link stands in place: most paths have one object.
  std::optional<ZnDbWatchLink> link_;
  std::vector<std::unique_ptr<ZnDbWatchLink>> moreLinks_;
};
