// For objects that show geometry shifted from where it logically is, as a broken view does.
#pragma once

#include "quorl/db/entity/edge_ref.h"
#include "quorl/rx/class_members.h"

// The edge lies in a part that the view leaves out. The number is part of the interface.
inline constexpr Quorl::ErrorStatus kEdgeIsCutAway = static_cast<Quorl::ErrorStatus>(131);

class ZnDbLogicalTransformPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbLogicalTransformPE)

public:
  // eOk for an object that shifts what it shows; eNothingToDo for another.
  virtual Quorl::ErrorStatus queryTransform(ZnDbObjectId object) const = 0;
  // eOk for an edge that is shown, kEdgeIsCutAway for one that is not.
  virtual Quorl::ErrorStatus queryEdge(const ZnDbEdgeRef& edge) const = 0;
  // The object and the curve, in logical coordinates, that the next getTransform is about; the curve must
  // live until then.
  virtual void noteSource(ZnDbObjectId object, const ZnGeCurve3d* curve) = 0;
  // From shown to logical coordinates for what was noted; eNothingToDo when nothing is shifted.
  virtual Quorl::ErrorStatus getTransform(ZnGeMatrix3d& transform) const = 0;
};
