// The module's texts: a library of its own in the folder of the host's language, held while the module is up.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/runtime.h"

class TORVI_EXPORT ZnTorviResources {
public:
  // Loads the library of the current language; without one all texts are empty. Loading twice does nothing.
  static void load();
  static void release();
  static bool isLoaded();
  // Empty for a number that the library has not. The numbers are those of message_numbers.h.
  static ZnString text(unsigned number);
};
