#include "quorl/db/core/working_globals.h"

namespace {

ZnDbGlobals* working = nullptr;

} // namespace

ZnDbGlobals* zndbWorkingGlobals() { return working; }

ZnDbGlobals& zndbDefaultGlobals() {
  static ZnDbGlobals globals;
  return globals;
}

ZnDbGlobals& zndbCurrentGlobals() { return working ? *working : zndbDefaultGlobals(); }

ZnDbWorkingGlobals::ZnDbWorkingGlobals()
    : globals(zndbCurrentGlobals())
    , around_(working) {
  working = &globals;
}

ZnDbWorkingGlobals::~ZnDbWorkingGlobals() { working = around_; }
