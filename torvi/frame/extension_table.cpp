#include "torvi/frame/extension_table.h"

#include <array>

#include "torvi/frame/registration_step.h"

namespace {

// Two lists, since what is added first is not what goes last.
constexpr std::array<TorviStep, 0> kAdditions{};
constexpr std::array<TorviStep, 0> kRemovals{};

} // namespace

void addTorviExtensions() { runTorviSteps(kAdditions); }

void removeTorviExtensions() { runTorviSteps(kRemovals); }
