// The layout of a pattern that is being made or edited: values come from the builder and nothing is read from
// or written to a body. A preview may hold one more member, a ghost under the cursor.
#pragma once

#include "torvi/pattern/layout.h"

class TORVI_EXPORT ZnDbCenterMarkPatternTransientLayout : public ZnDbCenterMarkPatternLayout {
public:
  // The center object is null; while one is edited, the builder sets it. A layout is for one set of edges.
  ZnDbCenterMarkPatternTransientLayout(CenterMarkPatternType type, const ZnDbEdgeRef& referenceEdge,
                                       double pickParam, bool fullPcd, bool showCenterMark, bool autoFullPcd);
  ~ZnDbCenterMarkPatternTransientLayout() override;

  // Marks and pieces of center line in the space's coordinates, without the whole invisible curve. A cursor
  // outside all circles of an open pattern is led to by the center line and gets no mark. eInvalidInput when
  // the edges make no pattern.
  Quorl::ErrorStatus createTransients(const ZnArray<ZnDbEdgeRef>& edges, const ZnGePoint3d* cursorPoint,
                                      ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;

protected:
  bool computeBlockTransform(const ZnArray<ZnGeCurve3d*>& curves, const ZnArray<ZnString>& keys) override;
  ZnPatternMembers collectMembersOnCurve(const ZnGeCurve2d& curve, ZnPatternCenters& centers) const override;
  // A command is to refuse a reference edge that does not fit.
  bool isReferenceEdgeOptional() const override { return false; }

private:
  bool isInsideCircle(const ZnGePoint3d& point) const;
  void appendCursorCircle(const ZnGePoint3d& point);
  void settleCursorMember();

  bool cursorMemberActive_ = false; // the last circle is the cursor's
};
