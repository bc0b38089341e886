// Reactors of system variables: they see a change before it happens, may refuse or replace the value, and
// hear of it afterwards.
#pragma once

#include "quorl/rx/class_members.h"
#include "quorl/rx/res_buf.h"

class ZnRxVariable;

// A change under way.
class ZnRxVariableChangingEventArgs {
public:
  ZnRxVariableChangingEventArgs(const ZnRxVariable& variable, resbuf value);

  // The value to come, of the variable's type, with the replacements made so far.
  const resbuf* newValue() const { return &value_; }
  // Replaces it. eInvalidInput or eOutOfRange, and nothing replaced, when the variable can't take it.
  Quorl::ErrorStatus setNewValue(const resbuf& value);
  // Refuses the change; the first message counts.
  void veto(const ZnString& message);

  bool isVetoed() const { return vetoed_; }
  const ZnString& vetoMessage() const { return message_; }

private:
  const ZnRxVariable& variable_;
  resbuf value_;
  ZnString message_;
  bool vetoed_ = false;
};

// A change that has happened.
class ZnRxVariableChangedEventArgs {
public:
  explicit ZnRxVariableChangedEventArgs(resbuf value)
      : value_(std::move(value)) {}
  const resbuf* newValue() const { return &value_; }

private:
  resbuf value_;
};

class ZnRxVariableReactor : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxVariableReactor)

public:
  virtual void changing(ZnRxVariable& variable, ZnRxVariableChangingEventArgs& args);
  virtual void changed(ZnRxVariable& variable, ZnRxVariableChangedEventArgs& args);
};
