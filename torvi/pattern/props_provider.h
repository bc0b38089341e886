// What the size rule needs to know of a pattern. Lengths are those of the block: they are what is stored, and
// a reference without edges that was scaled shows the block larger or smaller.
#pragma once

#include "torvi/centermark/props_provider.h"

class ZnPatternPropsProvider : public ZnDbCenterMarkPropsProvider {
public:
  using ZnDbCenterMarkPropsProvider::ZnDbCenterMarkPropsProvider;

  double refCircleRadius() const override; // of the pitch circle, 0 where its center has no mark
  // Of an arm as it is stored. The length that it is drawn with is at least that of the cross, and the size
  // of the cross may follow from here.
  double extension(ZnCenterMarkSubEntType type) const override;
};
