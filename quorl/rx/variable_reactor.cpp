#include "quorl/rx/variable_reactor.h"

#include "quorl/rx/variable.h"

ZNRX_DEFINE_ABSTRACT(ZnRxVariableReactor, ZnRxObject)

ZnRxVariableChangingEventArgs::ZnRxVariableChangingEventArgs(const ZnRxVariable& variable, resbuf value)
    : variable_(variable)
    , value_(std::move(value)) {}

Quorl::ErrorStatus ZnRxVariableChangingEventArgs::setNewValue(const resbuf& value) {
  ZnRxVariableValue accepted;
  const Quorl::ErrorStatus status = variable_.accept(value, accepted);
  if (status == Quorl::eOk) value_ = accepted.toBuffer();
  return status;
}

void ZnRxVariableChangingEventArgs::veto(const ZnString& message) {
  if (vetoed_) return;
  vetoed_ = true;
  message_ = message;
}

void ZnRxVariableReactor::changing(ZnRxVariable&, ZnRxVariableChangingEventArgs&) {}

void ZnRxVariableReactor::changed(ZnRxVariable&, ZnRxVariableChangedEventArgs&) {}
