// Objects whose size on paper is fixed, whatever the scale of the view.
#pragma once

#include "quorl/rx/class_members.h"

class ZnDbObject;

class ZnDbAnnotativeObjectPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAnnotativeObjectPE)

public:
  virtual bool annotative(const ZnDbObject* object) const = 0;
  // eNotProvided for a class whose objects can't change this.
  virtual Quorl::ErrorStatus setAnnotative(ZnDbObject* object, bool annotative) const = 0;
};
