// A step of the module's start or end; the tables of steps say what is hung into the host and in which order.
#pragma once

#include <span>

using TorviStep = void (*)();

inline void runTorviSteps(std::span<const TorviStep> steps) {
  for (const TorviStep step : steps) step();
}
