#include "quorl/db/core/drawable.h"

ZNRX_DEFINE_ABSTRACT(ZnGiDrawable, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnGiDrawableOverrule, ZnRxOverrule)

bool ZnGiDrawable::worldDraw(ZnGiWorldDraw& draw) const {
  if (const auto* first = ZnRxOverrule::firstApplicable<ZnGiDrawableOverrule>(this))
    return first->worldDraw(this, draw);
  return subWorldDraw(draw);
}

bool ZnGiDrawableOverrule::worldDraw(const ZnGiDrawable* drawable, ZnGiWorldDraw& draw) const {
  if (const auto* next = ZnRxOverrule::firstApplicable<ZnGiDrawableOverrule>(drawable, this))
    return next->worldDraw(drawable, draw);
  return drawable->subWorldDraw(draw);
}
