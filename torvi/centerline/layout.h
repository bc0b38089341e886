// Turns two edges into the one line of a center line, keeps its sense while they change, and lays extensions
// and overshoots on it. The block's origin is the middle of the line between the edges.
#pragma once

#include <optional>

#include "torvi/centerline/object_wrapper.h"
#include "torvi/core/layout.h"
#include "torvi/core/object_pointer.h"

class TORVI_EXPORT ZnDbCenterLineLayout : public ZnDbTorviLayout {
public:
  explicit ZnDbCenterLineLayout(ZnDbObjectId centerObject);
  ~ZnDbCenterLineLayout() override;

  Quorl::ErrorStatus createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>& keys) override;
  // eInvalidInput when no line can be had. Remembers length and direction, takes over the scale of a
  // reference that has lost its edges, and lets an extension of just half the length follow from now on.
  Quorl::ErrorStatus evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;
  Quorl::ErrorStatus compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;

  // The line between the edges, without extensions, in block coordinates, as a new curve and as a value; the
  // layout's transform takes it to its place. Without its edges: what was remembered, where it stands now.
  // eInvalidInput unless two edges are segments and for edges between which there is no line.
  virtual Quorl::ErrorStatus calculateCenterLine(ZnArray<ZnGeCurve3d*>& curves, ZnGeLineSeg3d& line);

private:
  using LinePointer = ZnDbTorviObjectPointer<ZnDbCenterLineObjectWrapper>;

  ZnDbCenterLineObjectWrapper* wrapper() const; // null for no center line
  Quorl::ErrorStatus lineBetweenEdges(ZnArray<ZnGeCurve3d*>& curves, ZnGeVector3d& base) const;
  ZnGeLineSeg3d unassociatedGeometry(const ZnGeLineSeg3d& held);
  ZnGeVector3d
  freeDirection() const; // of a line without its edges, as a unit vector; zero where nothing tells
  void keepDirection(ZnGeLineSeg3d& line) const;
  Quorl::ErrorStatus applyExtensions(ZnArray<ZnGeCurve3d*>& curves) const;
  void rematchExtensions(const ZnGeLineSeg3d& line) const;
  void scaleExtensions() const;

  mutable std::optional<LinePointer> wrapper_; // made once for the operation that the layout lives for
};
