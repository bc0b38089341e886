// Tells that an entity annotates other geometry and follows it.
#pragma once

#include "quorl/rx/class_members.h"

class ZnDbEntity;

class ZnDbAssocAnnotationPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocAnnotationPE)

public:
  virtual bool isAssociativeAnnotation(const ZnDbEntity* entity) const = 0;
};
