// Whatever can show itself.
#pragma once

#include "quorl/db/core/object_id.h"
#include "quorl/rx/overrule.h"

class ZnGiWorldDraw;

class ZnGiDrawable : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnGiDrawable)

public:
  // Draws in world coordinates, overrules first. False: nothing was drawn.
  bool worldDraw(ZnGiWorldDraw& draw) const;
  // The database id, or null for an object that stands in for one.
  virtual ZnDbObjectId drawableId() const { return {}; }

protected:
  friend class ZnGiDrawableOverrule;
  virtual bool subWorldDraw(ZnGiWorldDraw&) const { return false; }
};

class ZnGiDrawableOverrule : public ZnRxOverrule {
  ZNRX_DECLARE_MEMBERS(ZnGiDrawableOverrule)

public:
  // The base goes on to the next overrule or the drawable itself.
  virtual bool worldDraw(const ZnGiDrawable* drawable, ZnGiWorldDraw& draw) const;
};
