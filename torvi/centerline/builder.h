// Makes center lines: first values, and from two picked points the choice of the bisector.
#pragma once

#include "torvi/core/builder.h"

class TORVI_EXPORT ZnCenterLineBuilder : public ZnTorviBuilder {
public:
  // Two edges; two points, in the coordinates of the line's space, at which they were picked, in the same
  // order. A null database means the working one.
  ZnCenterLineBuilder(const ZnArray<ZnDbEdgeRef>& edges, const ZnGePoint3d* pickPoints,
                      ZnDbDatabase* database);
  explicit ZnCenterLineBuilder(ZnDbDatabase* database = nullptr);
  ~ZnCenterLineBuilder() override = default;

  // The class of the bodies, found by name once; the module clears it when it goes.
  static ZnRxClass* gpDesc;

protected:
  ZnDbTorviLayout* getLayout() const override;
  // eInvalidInput for edges that are no segments, and for skew ones.
  Quorl::ErrorStatus initValuesInBody(ZnDbObjectId bodyId) const override;
  // The choice of the bisector is made anew; extensions and overshoots stay.
  Quorl::ErrorStatus subReassociateActionBodyToInputEdge(ZnDbObjectId bodyId) const override;

private:
  Quorl::ErrorStatus initEdgeRefDir(ZnDbObjectId bodyId) const;
};
