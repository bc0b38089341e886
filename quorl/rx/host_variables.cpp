#include "quorl/rx/host_variables.h"

#include "quorl/rx/variables_dictionary.h"

namespace {

using Value = ZnRxVariableValue;

constexpr auto kDrawing = ZnRxVariableScope::kDrawing;
constexpr auto kSession = ZnRxVariableScope::kSession;

struct HostVariable {
  const wchar_t* name;
  Value defaultValue;
  ZnRxVariableScope scope;
  ZnRxVariableRange range = {};
};

ZnRxVariableRange atLeastZero() { return {.low = 0.0}; }
ZnRxVariableRange aboveZero() { return {.low = 0.0, .aboveLow = true}; }
ZnRxVariableRange zeroOrOne() { return {.low = 0.0, .high = 1.0}; }

} // namespace

// An empty text leaves the choice to whoever reads the variable. What travels with a drawing is how its
// objects look; how the user works is the session's.
void addHostVariables(ZnRxVariablesDictionary& dictionary) {
  const HostVariable variables[] = {
      {L"CENTERCROSSSIZE", Value::ofString(L"0.1x"), kDrawing},
      {L"CENTERCROSSGAP", Value::ofString(L"0.05x"), kDrawing},
      {L"CENTEREXE", Value::ofDouble(0.5), kDrawing, atLeastZero()},
      {L"CENTERMARKEXE", Value::ofBool(true), kDrawing},
      // Any number is taken; 1 alone switches the rule on.
      {L"CENTERMARKCHECKARC", Value::ofInt16(0), kDrawing},
      {L"CENTERLTYPE", Value::ofString({}), kDrawing},
      // Its lower limit is a matter of the reactor that has the message for it.
      {L"CENTERLTSCALE", Value::ofDouble(1.0), kDrawing},
      {L"CENTERLTYPEFILE", Value::ofString({}), kDrawing},
      {L"CENTERLAYER", Value::ofString({}), kDrawing},
      {L"CENTERLWEIGHT", Value::ofInt16(25), kDrawing}, // hundredths of a millimetre
      {L"CENTERMARKPATTERNAUTO", Value::ofInt16(0), kSession, zeroOrOne()},
      {L"LTSCALE", Value::ofDouble(1.0), kDrawing, aboveZero()},
      {L"UNDOMEMORY", Value::ofInt16(512), kSession, atLeastZero()}, // megabytes of a drawing's history
  };
  for (const HostVariable& row : variables)
    dictionary.addVariable(std::make_unique<ZnRxVariable>(row.name, row.defaultValue, row.scope, row.range));
}
