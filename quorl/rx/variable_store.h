// Where the values of drawing variables live: each drawing has its own.
#pragma once

#include "quorl/base/atom.h"

class ZnRxVariableValue;

class ZnRxVariableStore {
public:
  virtual ~ZnRxVariableStore() = default;
  // Null where the drawing holds no value of its own; names are the variables' own spelling.
  virtual const ZnRxVariableValue* find(ZnAtom name) const = 0;
  virtual void put(ZnAtom name, const ZnRxVariableValue& value) = 0;
};
