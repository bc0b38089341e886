// What the module must hear of drawings: viewports, layers and scales that change, references that go, and
// drawings that come, are saved and go.
#pragma once

#include <unordered_set>

#include "torvi/host/database.h"
#include "torvi/host/export.h"

class TORVI_EXPORT ZnDbDatabaseReactor_Torvi : public ZnDbDatabaseReactor {
  ZNRX_DECLARE_MEMBERS(ZnDbDatabaseReactor_Torvi)

public:
  void objectModified(ZnDbDatabase* db, const ZnDbObject* object) override;
  void objectErased(ZnDbDatabase* db, const ZnDbObject* object, bool erasing) override;
  void headerVariableChanged(ZnDbDatabase* db, const ZnString& name, bool success) override;
};

// Adds the reactor above to every drawing that is made or opened.
class ZnRxEventReactor_Torvi : public ZnRxEventReactor {
public:
  // One for the process, a former one replaced; it begins with the working drawing, if there is one.
  static void attach();
  static void detach();
  ~ZnRxEventReactor_Torvi() override;

  void drawingFileOpened(ZnDbDatabase* db, const wchar_t* file) override;
  void firstOpenCompleted(ZnDbDatabase* db) override;
  void databaseConstructed(ZnDbDatabase* db) override;
  void databaseToBeDestroyed(ZnDbDatabase* db) override;
  void beginSave(ZnDbDatabase* db, const wchar_t* file) override;

private:
  ZnDbDatabaseReactor_Torvi reactor_;
  std::unordered_set<ZnDbDatabase*> attached_;
};
