// Hands the system variable that switches auto fill on and off to the pattern builders.
#pragma once

#include "torvi/host/runtime.h"

class ZnRxVariableAutoCMPReactor : public ZnRxVariableReactor {
public:
  // The one reactor of the process. Attaching also takes over the value that the variable has.
  static void attach();
  static void detach();

  void changed(ZnRxVariable& variable, ZnRxVariableChangedEventArgs& args) override;

private:
  static ZnRxVariableAutoCMPReactor& instance();
};
