// Asked of an object on which a dependency is about to stand.
#pragma once

#include "quorl/db/entity/subent.h"
#include "quorl/rx/class_members.h"

class ZnDbAssocDependency;
class ZnDbObject;

class ZnDbAssocDependencyPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocDependencyPE)

public:
  // False: no action may depend on the object, and attaching fails.
  virtual bool allowsDirectDependency() const { return true; }
  // The path on which the dependency, which is in its action already, shall stand instead of the wanted one;
  // object is the wanted path's leaf, open for read. A failure keeps the wanted path.
  virtual Quorl::ErrorStatus redirectToAnotherObject(const ZnDbObject* object,
                                                     const ZnDbCompoundObjectId& wanted,
                                                     ZnDbAssocDependency* dependency,
                                                     ZnDbCompoundObjectId& redirected) const;
};
