// One system variable: its type, limits and default, its value, and the reactors that watch it.
#pragma once

#include <limits>
#include <vector>

#include "quorl/rx/class_members.h"
#include "quorl/rx/variable_value.h"

class ZnRxVariableReactor;

enum class ZnRxVariableScope { kSession, kDrawing };

// The numbers that a variable takes; texts have no limits.
struct ZnRxVariableRange {
  double low = std::numeric_limits<double>::lowest();
  double high = std::numeric_limits<double>::max();
  bool aboveLow = false; // low itself is outside
  bool contains(double number) const { return (aboveLow ? number > low : number >= low) && number <= high; }
};

class ZnRxVariable : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxVariable)

public:
  // The default gives the type and stands until a value is set: in the session, or in the current
  // drawing's store.
  ZnRxVariable(const ZnString& name, const ZnRxVariableValue& defaultValue, ZnRxVariableScope scope,
               const ZnRxVariableRange& range = {});

  const ZnString& name() const { return name_; }
  ZnRxVariableType type() const { return default_.type(); }
  ZnRxVariableScope scope() const { return scope_; }
  const ZnRxVariableRange& range() const { return range_; }
  const ZnRxVariableValue& defaultValue() const { return default_; }
  void setReadOnly(bool on) { readOnly_ = on; }

  // The value that counts now. The reference holds until the next change of a variable or a drawing.
  const ZnRxVariableValue& value() const;
  // The buffer as a value that this variable may hold, or eInvalidInput or eOutOfRange.
  Quorl::ErrorStatus accept(const resbuf& buffer, ZnRxVariableValue& accepted) const;
  // The whole change: conversion, limits, reactors before, store, reactors after. On failure nothing has
  // changed and error says why in one sentence: eVariableReadOnly, eInvalidInput, eOutOfRange, eVetoed.
  Quorl::ErrorStatus setValue(const resbuf& buffer, ZnString& error);

  // Reactors are called in the order in which they were added; the caller keeps them. eDuplicateKey,
  // eKeyNotFound, eInvalidInput for null.
  Quorl::ErrorStatus addReactor(ZnRxVariableReactor* reactor);
  Quorl::ErrorStatus removeReactor(ZnRxVariableReactor* reactor);

private:
  bool isWatchedBy(const ZnRxVariableReactor* reactor) const;
  ZnString whyNot(Quorl::ErrorStatus status) const;
  void store(const ZnRxVariableValue& value);

  ZnString name_;
  ZnRxVariableValue default_;
  ZnRxVariableValue session_;
  ZnRxVariableScope scope_ = ZnRxVariableScope::kSession;
  ZnRxVariableRange range_;
  bool readOnly_ = false;
  std::vector<ZnRxVariableReactor*> reactors_;
};
