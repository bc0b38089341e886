#include "quorl/db/core/host_services.h"

#include "quorl/db/core/database.h"
#include "quorl/rx/host_globals.h"
#include "quorl/rx/variables_dictionary.h"

namespace {
ZnDbHostApplicationServices* current = nullptr;
}

void ZnDbHostApplicationServices::setWorkingDatabase(ZnDbDatabase* database) {
  workingDatabase_ = database;
  activeViewport_.setNull();
  if (this == zndbHostApplicationServices()) ZnRxVariablesDictionary::get()->setCurrentStore(database);
}

int ZnDbHostApplicationServices::productKind() const { return ::productKind(); }

ZnDbHostApplicationServices* zndbHostApplicationServices() {
  static ZnDbHostApplicationServices standard;
  return current ? current : &standard;
}

void zndbSetHostApplicationServices(ZnDbHostApplicationServices* services) {
  current = services;
  ZnRxVariablesDictionary::get()->setCurrentStore(zndbHostApplicationServices()->workingDatabase());
}
