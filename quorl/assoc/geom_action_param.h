// What edge and vertex parameters share: one dependency on a part of an entity.
#pragma once

#include "quorl/assoc/action_param.h"
#include "quorl/assoc/geom_dependency.h"

class ZnDbAssocGeomActionParam : public ZnDbAssocActionParam {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocGeomActionParam)

public:
  // eNothingToDo, and an empty path, for a parameter that depends on nothing.
  Quorl::ErrorStatus getDependentOnCompoundObject(ZnDbCompoundObjectId& path) const;
  // The first id of the path, read without a copy; false for a parameter that depends on nothing.
  bool dependentTopId(ZnDbObjectId& id) const;
  // Null while it has none or it is erased.
  ZnDbAssocGeomDependency* geomDependency() const;

  ZNDB_DECLARE_FIELDS
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  // Puts the dependency on that part, making it where missing. eNotInDatabase outside of an action.
  Quorl::ErrorStatus dependOn(const ZnDbCompoundObjectId& path, const ZnDbSubentId& subent, bool isRead,
                              bool isWrite, int order);
  // Detaches the dependency, or with erasing takes it out of the action and erases it.
  Quorl::ErrorStatus release(bool erasing);
  Quorl::ErrorStatus subErase(bool erasing) override;

private:
  ZnDbObjectId dependencyId_; // owned by the action like its others; null while empty
};
