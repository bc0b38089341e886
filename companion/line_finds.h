// The part of TORVI.ANNOTATE that deals with center lines: slots, and strips.
#pragma once

#include <unordered_map>

#include "companion/slots.h"
#include "companion/strips.h"
#include "exchange/annotate.h"

namespace companion {

class LineFinds {
public:
  // Looks for the slots and strips that are asked for. Slots whose ends are outside the limits of radius are
  // passed over. The round edges outlive this.
  LineFinds(const exchange::AnnotateWish& wish, ZnDbObjectId space, const std::vector<RoundEdge>& round,
            double minRadius, double maxRadius);

  // Whether the edge, one of the given ones, stands for the end of a slot: it is to have a mark whatever its
  // span.
  bool isSlotEnd(const RoundEdge& edge) const { return slotEnds_.count(&edge) != 0; }
  // The direction of that slot in radians, from minus to plus a quarter turn; 0 for any other edge.
  double slotDirection(const RoundEdge& edge) const;

  // Makes the center lines that are not there yet, and tells slots, strips and what failed.
  void make(ZnDbDatabase& database, exchange::AnnotateOutcome& outcome) const;

private:
  ZnDbObjectId space_;
  const std::vector<RoundEdge>& round_;
  std::vector<StraightEdge> straight_;
  std::vector<Slot> slots_;
  std::vector<Strip> strips_;
  std::unordered_map<const RoundEdge*, double> slotEnds_; // with the slot's direction
};

} // namespace companion
