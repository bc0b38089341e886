#include "torvi/frame/reactor_table.h"

#include <array>

#include "torvi/frame/registration_step.h"

namespace {

constexpr std::array<TorviStep, 0> kAttachments{};
constexpr std::array<TorviStep, 0> kDetachments{};

} // namespace

void attachTorviReactors() { runTorviSteps(kAttachments); }

void detachTorviReactors() { runTorviSteps(kDetachments); }
