// Transient watchers of one object: they live in the program, not in the drawing.
#pragma once

#include "quorl/rx/class_members.h"

class ZnDbObject;

class ZnDbObjectReactor : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbObjectReactor)

public:
  virtual void openedForModify(const ZnDbObject*) {} // before the first change of an open
  virtual void modified(const ZnDbObject*) {}        // at the close that ends the changes
  virtual void modifiedUndone(const ZnDbObject*) {}
  virtual void erased(const ZnDbObject*, bool /*erasing*/) {}
  virtual void copied(const ZnDbObject* /*original*/, const ZnDbObject* /*copy*/) {}
  virtual void goodbye(const ZnDbObject*) {} // the object is about to be deleted from memory
};
