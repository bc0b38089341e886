#include "quorl/db/core/drawing_variables.h"

#include "quorl/base/string.h"

ZnAtom ZnDbDrawingVariables::linetypeScaleName() {
  static const ZnString name(L"LTSCALE");
  return name.atom();
}

const ZnRxVariableValue* ZnDbDrawingVariables::find(ZnAtom name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? nullptr : &found->second;
}

void ZnDbDrawingVariables::exchange(ZnAtom name, std::optional<ZnRxVariableValue>& value) {
  std::optional<ZnRxVariableValue> before;
  if (const ZnRxVariableValue* held = find(name)) before = *held;
  if (value)
    values_[name] = *value;
  else
    values_.erase(name);
  if (name == linetypeScaleName()) linetypeScale_ = value ? value->number().value_or(1.0) : 1.0;
  value = before;
}
