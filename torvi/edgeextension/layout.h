// Turns two edges that do not meet into the two lines of an edge extension: from the near end of each edge to
// where their extensions would cross, and a little past it. The block's origin is the crossing.
#pragma once

#include <optional>

#include "torvi/core/edge_relations.h"
#include "torvi/core/layout.h"
#include "torvi/core/object_pointer.h"
#include "torvi/edgeextension/object_wrapper.h"

class ZnDbEdgeExtensionActionBody;

class TORVI_EXPORT ZnDbEdgeExtensionLayout : public ZnDbTorviLayout {
public:
  explicit ZnDbEdgeExtensionLayout(ZnDbObjectId centerObject);
  ~ZnDbEdgeExtensionLayout() override;

  Quorl::ErrorStatus createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>& keys) override;
  // As compareGeometry; then sets anchors that are not set, and remembers the edges.
  Quorl::ErrorStatus evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;
  // One line an edge, in order. One edge that is gone is replaced by what is remembered of it, and without
  // any the lines are those in the block. eNothingToDo for edges that are parallel, skew or reach the
  // crossing, and for lost anchors with the crossing on another side than it was; eInvalidInput when an edge
  // now passes the crossing, so that its anchor is the far end, and for more than two edges.
  Quorl::ErrorStatus compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;

private:
  using ExtensionPointer = ZnDbTorviObjectPointer<ZnDbEdgeExtensionObjectWrapper>;
  static constexpr int kEdges = 2;

  ZnDbEdgeExtensionObjectWrapper* wrapper() const; // null for no edge extension
  Quorl::ErrorStatus linesOfBlock(ZnArray<ZnGeCurve3d*>& curves);
  void replaceMissingEdge();
  ZnGeLineSeg3d cachedRefEdge(int index) const;
  Quorl::ErrorStatus calculateExtensionLines(ZnArray<ZnGeCurve3d*>& curves);
  Quorl::ErrorStatus checkAnchors() const;
  bool isSameSideAsCached(const torvi::EdgeMeeting& now) const;
  Quorl::ErrorStatus getDimStyleDistances(double& extension, double& gap) const;
  void updateAnchors() const;
  ZnDbVertexRef vertexAtNearEnd(const ZnDbEdgeRef& edge, int index) const;

  ZnArray<ZnGeLineSeg3d> edges_; // as they are now, in the coordinates of the object's space
  ZnGePoint3d nearEnds_[kEdges];
  bool anchored_ = false;                           // both anchors were found where they should be
  mutable std::optional<ExtensionPointer> wrapper_; // made once for the operation that the layout lives for
};
