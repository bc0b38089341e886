// Watchers of one database.
#pragma once

#include "quorl/base/string.h"
#include "quorl/rx/class_members.h"

class ZnDbDatabase;
class ZnDbObject;

class ZnDbDatabaseReactor : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbDatabaseReactor)

public:
  virtual void objectAppended(ZnDbDatabase*, const ZnDbObject*) {}
  virtual void objectOpenedForModify(ZnDbDatabase*, const ZnDbObject*) {}
  virtual void objectModified(ZnDbDatabase*, const ZnDbObject*) {}
  virtual void objectErased(ZnDbDatabase*, const ZnDbObject*, bool /*erasing*/) {}
  virtual void headerVariableWillChange(ZnDbDatabase*, const ZnString& /*name*/) {}
  virtual void headerVariableChanged(ZnDbDatabase*, const ZnString& /*name*/, bool /*success*/) {}
  virtual void goodbye(ZnDbDatabase*) {}
};
