#include "torvi/pattern/auto_fill_reactor.h"

#include "torvi/pattern/builder.h"

namespace {

constexpr const wchar_t* kVariable = L"CENTERMARKPATTERNAUTO";
constexpr int kOn = 1;

ZnRxVariable* variable() { return ZnRxVariablesDictionary::get()->getVariable(kVariable); }

} // namespace

ZnRxVariableAutoCMPReactor& ZnRxVariableAutoCMPReactor::instance() {
  static ZnRxVariableAutoCMPReactor reactor;
  return reactor;
}

void ZnRxVariableAutoCMPReactor::attach() {
  ZnCenterMarkPatternBuilder::setAutoFillMode(ZnRxVariablesDictionary::get()->getInt16(kVariable, 0) == kOn);
  if (ZnRxVariable* watched = variable()) watched->addReactor(&instance());
}

void ZnRxVariableAutoCMPReactor::detach() {
  if (ZnRxVariable* watched = variable()) watched->removeReactor(&instance());
}

void ZnRxVariableAutoCMPReactor::changed(ZnRxVariable&, ZnRxVariableChangedEventArgs& args) {
  ZnCenterMarkPatternBuilder::setAutoFillMode(args.newValue()->shortInt == kOn);
}
