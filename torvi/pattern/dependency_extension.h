// Keeps what others attach to a pattern's center line alive: pieces come and go with the members, so a
// dependency on a piece is led to the whole curve, which stands as long as the pattern does.
#pragma once

#include "torvi/host/association.h"
#include "torvi/host/export.h"

class TORVI_EXPORT ZnDbCenterMarkPatternAssocDependencyPE : public ZnDbAssocDependencyPE {
  ZNRX_DECLARE_MEMBERS(ZnDbCenterMarkPatternAssocDependencyPE)

public:
  bool allowsDirectDependency() const override { return true; }
  Quorl::ErrorStatus redirectToAnotherObject(const ZnDbObject* object, const ZnDbCompoundObjectId& wanted,
                                             ZnDbAssocDependency* dependency,
                                             ZnDbCompoundObjectId& redirected) const override {
    return redirectDependency(object, wanted, dependency, redirected);
  }
  // Center objects are led from pieces of any shape; of all others only radial and diameter dimensions are,
  // and from arcs alone: a length measured on a piece of line is meant to be that piece's. Always eOk.
  Quorl::ErrorStatus redirectDependency(const ZnDbObject* object, const ZnDbCompoundObjectId& compoundId,
                                        const ZnDbAssocDependency* dependency,
                                        ZnDbCompoundObjectId& newCompoundId) const;

private:
  static bool findCoveringCenterLine(const ZnDbCurve* curve, ZnDbObjectId& id);
};
