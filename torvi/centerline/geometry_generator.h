// Makes the center line of two edges that were read from a drawing; knows nothing of the drawing itself.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

class TORVI_EXPORT IZnDbCenterGeometryGenerator {
public:
  virtual ~IZnDbCenterGeometryGenerator() = default;
  // Replaces the results, deleting what they held; the new ones are the caller's.
  virtual Quorl::ErrorStatus generateGeometry(ZnArray<ZnGeCurve3d*>& results,
                                              const ZnArray<const ZnGeCurve3d*>& inputs) = 0;
};

class TORVI_EXPORT ZnDbCenterLineGeometryGenerator : public IZnDbCenterGeometryGenerator {
public:
  // One ending for each edge: 0 when its ray points to the start of the edge, else to the end.
  explicit ZnDbCenterLineGeometryGenerator(const ZnArray<int>& edgeRefDirEndings);
  // One segment between two segments. eInvalidInput, with the results as they were, for anything but two
  // segments; eInvalidInput, with none, where the two have no center line.
  Quorl::ErrorStatus generateGeometry(ZnArray<ZnGeCurve3d*>& results,
                                      const ZnArray<const ZnGeCurve3d*>& inputs) override;

private:
  ZnArray<int> edgeRefDirEndings_;
};
