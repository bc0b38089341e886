#include "torvi/frame/reactor_table.h"

#include "torvi/frame/registration_step.h"
#include "torvi/pattern/auto_fill_reactor.h"

namespace {

constexpr TorviStep kAttachments[] = {ZnRxVariableAutoCMPReactor::attach};
constexpr TorviStep kDetachments[] = {ZnRxVariableAutoCMPReactor::detach};

} // namespace

void attachTorviReactors() { runTorviSteps(kAttachments); }

void detachTorviReactors() { runTorviSteps(kDetachments); }
