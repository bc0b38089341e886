// Turns the values of a center mark into its six lines, in the order of ZnCenterMarkSubEntType.
#pragma once

#include "torvi/core/layout.h"

class TORVI_EXPORT ZnDbCenterMarkLayout : public ZnDbTorviLayout {
public:
  using ZnDbTorviLayout::ZnDbTorviLayout;

  Quorl::ErrorStatus createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>& keys) override;
  // Arms of the cross are continuous; hidden lines are hidden.
  Quorl::ErrorStatus adjustEntities(const ZnArray<ZnDbEntity*>& entities,
                                    const ZnArray<ZnString>& keys) override;
  // Takes over what the user did to the reference before it generates. eInvalidInput without curves.
  Quorl::ErrorStatus evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;
  Quorl::ErrorStatus compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;

private:
  ZnGeCircArc3d referenceCircle_; // as compareGeometry has found it
};
