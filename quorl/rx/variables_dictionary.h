// The system variables of the process by name. Reading takes names as plain texts and allocates nothing
// for numbers.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quorl/rx/variable.h"
#include "quorl/rx/variable_store.h"

class ZnRxVariablesDictionary {
public:
  // With the host's own variables in it from the start; never null.
  static ZnRxVariablesDictionary* get();

  // Names are compared without regard to case. Null when there is none.
  ZnRxVariable* getVariable(std::wstring_view name) const;

  // The default answers for a variable that does not exist, or that holds a text where a number is
  // wanted, or a number out of the asked type's range.
  bool getBool(std::wstring_view name, bool defaultValue = false) const;
  std::int16_t getInt16(std::wstring_view name, std::int16_t defaultValue = 0) const;
  double getDouble(std::wstring_view name, double defaultValue = 0.0) const;
  ZnString getString(std::wstring_view name, const ZnString& defaultValue = {}) const;

  // As ZnRxVariable::setValue; eKeyNotFound for an unknown name. A text is what a user typed.
  Quorl::ErrorStatus set(std::wstring_view name, const resbuf& value, ZnString& error);
  Quorl::ErrorStatus set(std::wstring_view name, const ZnString& text, ZnString& error);

  // eDuplicateKey, and the variable is gone, when the name is taken; eInvalidInput for null or no name.
  Quorl::ErrorStatus addVariable(std::unique_ptr<ZnRxVariable> variable);
  Quorl::ErrorStatus removeVariable(std::wstring_view name);
  // Sorted by name.
  std::vector<ZnRxVariable*> variables() const;

  // The store of the working drawing; null when there is none. The caller keeps it.
  void setCurrentStore(ZnRxVariableStore* store) { store_ = store; }
  ZnRxVariableStore* currentStore() const { return store_; }

private:
  struct NoCaseLess {
    using is_transparent = void;
    bool operator()(std::wstring_view a, std::wstring_view b) const;
  };

  std::map<std::wstring, std::unique_ptr<ZnRxVariable>, NoCaseLess> variables_;
  // By the very letters of the name, which is how code asks, and often. The map above owns the letters.
  std::unordered_map<std::wstring_view, ZnRxVariable*> asWritten_;
  ZnRxVariableStore* store_ = nullptr;
};
