// The program's tolerances, each with its reason.
#pragma once

namespace app {

// Points that people type are rounded. Where drawn and generated edges are both as near as this, in drawing
// units, nearness does not tell which one is meant.
constexpr double kPickSlack = 0.01;

} // namespace app
