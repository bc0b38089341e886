// The handle on a center mark pattern for everyone outside the core; see ZnDbTorviObjectWrapper for its ways
// and ZnDbCenterMarkPatternActionBody for what the values mean.
#pragma once

#include "torvi/centermark/object_wrapper.h"
#include "torvi/pattern/action_body.h"

class TORVI_EXPORT ZnDbCenterMarkPatternObjectWrapper : public ZnDbCenterMarkObjectWrapper {
public:
  using ZnDbCenterMarkObjectWrapper::ZnDbCenterMarkObjectWrapper;
  static constexpr ZnDbTorviType wrapperCenterType() { return kCenterMarkPattern; }

  CenterMarkPatternType getCenterPatternType() const;
  Quorl::ErrorStatus setCenterPatternType(CenterMarkPatternType type);
  bool isFullPCD() const;
  Quorl::ErrorStatus setIsFullPCD(bool full);
  bool showCenterMark() const;
  Quorl::ErrorStatus setShowCenterMark(bool show);
  bool getReferenceEdge(ZnDbEdgeRef& edge, double& pickParam) const;
  Quorl::ErrorStatus setReferenceEdge(const ZnDbEdgeRef& edge, double pickParam);
  bool getCachedInputEdgeOnMajorAxis(ZnCenterMarkSubEntType type, int& index, double& radius) const;
  Quorl::ErrorStatus cacheInputEdgesOnMajorAxis(const int (&indices)[4], const double (&radii)[4]);
  double pitchRadius() const; // in the size of the block

  // Center lines. Setting validates: no length below zero, no unknown key.
  double startOvershoot(const ZnString& key) const;
  double endOvershoot(const ZnString& key) const;
  Quorl::ErrorStatus setStartOvershoot(const ZnString& key, double value);
  Quorl::ErrorStatus setEndOvershoot(const ZnString& key, double value);
  Quorl::ErrorStatus getCenterLineDependencyKeys(ZnArray<ZnString>& keys) const;
  Quorl::ErrorStatus renameCenterLineKey(const ZnString& oldKey, const ZnString& newKey);
  Quorl::ErrorStatus reverseCenterLineKey(const ZnString& oldKey, const ZnString& newKey);
  Quorl::ErrorStatus startCenterLine(const ZnString& key);
  double memberOvershoot() const;
  // In the coordinates of the pattern's space; eNothingToDo for a polar pattern.
  Quorl::ErrorStatus getCenterLineEndPoints(const ZnString& key, ZnGePoint3d& start, ZnGePoint3d& end) const;
};
