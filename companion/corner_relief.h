// Tells the small loops that a cutting path makes at corners from the round features of a part.
#pragma once

#include "companion/round_edges.h"

namespace companion {

// True for an arc within an outline whose neighbours are straight, long against its radius, and would meet at
// a corner inside its circle. A slot's end and a keyhole have neighbours that run side by side, a notch has
// them on one line, and those of a fillet meet outside its circle: these are none. Only an edge of an entity
// with neighbours of its own can be one.
bool isCornerRelief(const RoundEdge& edge);

} // namespace companion
