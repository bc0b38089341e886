#include "quorl/rx/variables_dictionary.h"

#include <cmath>

#include "quorl/rx/host_variables.h"

bool ZnRxVariablesDictionary::NoCaseLess::operator()(std::wstring_view a, std::wstring_view b) const {
  return std::lexicographical_compare(
      a.begin(), a.end(), b.begin(), b.end(),
      [](wchar_t left, wchar_t right) { return Quorl::foldCase(left) < Quorl::foldCase(right); });
}

ZnRxVariablesDictionary* ZnRxVariablesDictionary::get() {
  // Never destroyed: modules may still take their reactors off while the process ends.
  static ZnRxVariablesDictionary* dictionary = [] {
    auto* made = new ZnRxVariablesDictionary;
    addHostVariables(*made);
    return made;
  }();
  return dictionary;
}

ZnRxVariable* ZnRxVariablesDictionary::getVariable(std::wstring_view name) const {
  if (const auto exact = asWritten_.find(name); exact != asWritten_.end()) return exact->second;
  const auto found = variables_.find(name);
  return found == variables_.end() ? nullptr : found->second.get();
}

double ZnRxVariablesDictionary::getDouble(std::wstring_view name, double defaultValue) const {
  const ZnRxVariable* variable = getVariable(name);
  return variable ? variable->value().number().value_or(defaultValue) : defaultValue;
}

bool ZnRxVariablesDictionary::getBool(std::wstring_view name, bool defaultValue) const {
  return getDouble(name, defaultValue ? 1.0 : 0.0) != 0.0;
}

std::int16_t ZnRxVariablesDictionary::getInt16(std::wstring_view name, std::int16_t defaultValue) const {
  using Limits = std::numeric_limits<std::int16_t>;
  const double number = std::trunc(getDouble(name, defaultValue));
  return number >= Limits::min() && number <= Limits::max() ? static_cast<std::int16_t>(number)
                                                            : defaultValue;
}

ZnString ZnRxVariablesDictionary::getString(std::wstring_view name, const ZnString& defaultValue) const {
  const ZnRxVariable* variable = getVariable(name);
  return variable ? variable->value().text() : defaultValue;
}

Quorl::ErrorStatus ZnRxVariablesDictionary::set(std::wstring_view name, const resbuf& value,
                                                ZnString& error) {
  if (ZnRxVariable* variable = getVariable(name)) return variable->setValue(value, error);
  error = ZnString(L"There is no variable ") + name + L".";
  return Quorl::eKeyNotFound;
}

Quorl::ErrorStatus ZnRxVariablesDictionary::set(std::wstring_view name, const ZnString& text,
                                                ZnString& error) {
  return set(name, resbuf::ofString(text), error);
}

Quorl::ErrorStatus ZnRxVariablesDictionary::addVariable(std::unique_ptr<ZnRxVariable> variable) {
  if (!variable || variable->name().isEmpty()) return Quorl::eInvalidInput;
  std::wstring name(variable->name().view());
  const auto [place, isNew] = variables_.try_emplace(std::move(name), std::move(variable));
  if (!isNew) return Quorl::eDuplicateKey;
  asWritten_.emplace(place->first, place->second.get());
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxVariablesDictionary::removeVariable(std::wstring_view name) {
  const auto found = variables_.find(name);
  if (found == variables_.end()) return Quorl::eKeyNotFound;
  asWritten_.erase(found->first);
  variables_.erase(found);
  return Quorl::eOk;
}

std::vector<ZnRxVariable*> ZnRxVariablesDictionary::variables() const {
  std::vector<ZnRxVariable*> sorted;
  for (const auto& [name, variable] : variables_) sorted.push_back(variable.get());
  return sorted;
}
