// Modules add members to objects of other classes through facets: further classes of one object.
#pragma once

#include "quorl/base/array.h"
#include "quorl/rx/class.h"

// How a query treats facets.
class ZnRxMemberQueryContext {
public:
  // With promotion a facet's member stands in front of the object's own member of the same name; without
  // it the object's own members come first.
  explicit ZnRxMemberQueryContext(bool promotesFacets = false)
      : promotes_(promotesFacets) {}
  bool promotesFacets() const { return promotes_; }

private:
  bool promotes_;
};

class ZnRxFacetProvider {
public:
  virtual ~ZnRxFacetProvider() = default;
  // Appends the classes whose members the object has besides its own. The context is never null.
  virtual void getFacets(const ZnRxObject* object, const ZnRxMemberQueryContext* context,
                         ZnArray<ZnRxClass*>& classes) = 0;
};
