#include "quorl/rx/variable.h"

#include <algorithm>

#include "quorl/rx/real_format.h"
#include "quorl/rx/variable_reactor.h"
#include "quorl/rx/variables_dictionary.h"

ZNRX_DEFINE_ABSTRACT(ZnRxVariable, ZnRxObject)

ZnRxVariable::ZnRxVariable(const ZnString& name, const ZnRxVariableValue& defaultValue,
                           ZnRxVariableScope scope, const ZnRxVariableRange& range)
    : name_(name)
    , default_(defaultValue)
    , session_(defaultValue)
    , scope_(scope)
    , range_(range) {}

const ZnRxVariableValue& ZnRxVariable::value() const {
  if (scope_ == ZnRxVariableScope::kSession) return session_;
  const ZnRxVariableStore* store = ZnRxVariablesDictionary::get()->currentStore();
  const ZnRxVariableValue* stored = store ? store->find(name_.atom()) : nullptr;
  // A drawing of other hands may hold a value of another type under the name.
  return stored && stored->type() == type() ? *stored : default_;
}

Quorl::ErrorStatus ZnRxVariable::accept(const resbuf& buffer, ZnRxVariableValue& accepted) const {
  const std::optional<ZnRxVariableValue> value = ZnRxVariableValue::from(buffer, type());
  if (!value) return Quorl::eInvalidInput;
  const std::optional<double> number = value->number();
  if (number && !range_.contains(*number)) return Quorl::eOutOfRange;
  accepted = *value;
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxVariable::setValue(const resbuf& buffer, ZnString& error) {
  error.clear();
  ZnRxVariableValue accepted;
  const Quorl::ErrorStatus status = readOnly_ ? Quorl::eVariableReadOnly : accept(buffer, accepted);
  if (status != Quorl::eOk) {
    error = whyNot(status);
    return status;
  }

  // Reactors may take each other off while they are called.
  const std::vector<ZnRxVariableReactor*> asked = reactors_;
  ZnRxVariableChangingEventArgs changing(*this, accepted.toBuffer());
  for (ZnRxVariableReactor* reactor : asked) {
    if (isWatchedBy(reactor)) reactor->changing(*this, changing);
    if (!changing.isVetoed()) continue;
    error = changing.vetoMessage();
    return Quorl::eVetoed;
  }

  // Only acceptable replacements get into the arguments.
  accept(*changing.newValue(), accepted);
  store(accepted);
  const std::vector<ZnRxVariableReactor*> told = reactors_;
  ZnRxVariableChangedEventArgs changed(accepted.toBuffer());
  for (ZnRxVariableReactor* reactor : told)
    if (isWatchedBy(reactor)) reactor->changed(*this, changed);
  return Quorl::eOk;
}

void ZnRxVariable::store(const ZnRxVariableValue& value) {
  if (scope_ == ZnRxVariableScope::kSession)
    session_ = value;
  else if (ZnRxVariableStore* drawing = ZnRxVariablesDictionary::get()->currentStore())
    drawing->put(name_.atom(), value);
}

ZnString ZnRxVariable::whyNot(Quorl::ErrorStatus status) const {
  static constexpr const wchar_t* kWanted[] = {L"0 or 1", L"a whole number of 16 bits",
                                               L"a whole number of 32 bits", L"a number", L"a text"};
  if (status == Quorl::eVariableReadOnly) return name_ + L" is read only.";
  if (status == Quorl::eInvalidInput) return name_ + L" takes " + kWanted[static_cast<int>(type())] + L".";
  ZnString limits = name_ + (range_.aboveLow ? L" must be above " : L" must be at least ");
  limits += Quorl::shortestReal(range_.low);
  if (range_.high < ZnRxVariableRange().high) limits += L" and at most " + Quorl::shortestReal(range_.high);
  return limits + L".";
}

bool ZnRxVariable::isWatchedBy(const ZnRxVariableReactor* reactor) const {
  return std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end();
}

Quorl::ErrorStatus ZnRxVariable::addReactor(ZnRxVariableReactor* reactor) {
  if (!reactor) return Quorl::eInvalidInput;
  if (isWatchedBy(reactor)) return Quorl::eDuplicateKey;
  reactors_.push_back(reactor);
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxVariable::removeReactor(ZnRxVariableReactor* reactor) {
  if (!reactor) return Quorl::eInvalidInput;
  return std::erase(reactors_, reactor) > 0 ? Quorl::eOk : Quorl::eKeyNotFound;
}
