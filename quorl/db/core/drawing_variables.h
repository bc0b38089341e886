// The variables of one drawing, by name.
#pragma once

#include <optional>
#include <unordered_map>

#include "quorl/base/atom.h"
#include "quorl/rx/variable_value.h"

class ZnDbDrawingVariables {
public:
  const ZnRxVariableValue* find(ZnAtom name) const;
  // Puts the value, or its absence, in place and gives back what stood there: the exchange is its own
  // inverse. An absent value is a state of its own: undoing the first change makes the value absent again.
  void exchange(ZnAtom name, std::optional<ZnRxVariableValue>& value);
  const std::unordered_map<ZnAtom, ZnRxVariableValue>& all() const { return values_; }

  double linetypeScale() const { return linetypeScale_; } // kept apart: every drawn line asks for it
  static ZnAtom linetypeScaleName();

private:
  std::unordered_map<ZnAtom, ZnRxVariableValue> values_;
  double linetypeScale_ = 1.0;
};
