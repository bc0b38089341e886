// The layout of a pattern: reads its circles and values, has them analysed, and turns what was found into
// curves and keys. See analysis.h for how a pattern is found and drawing.h for what is drawn.
#pragma once

#include <memory>

#include "torvi/core/layout.h"
#include "torvi/core/object_pointer.h"
#include "torvi/pattern/action_body.h"
#include "torvi/pattern/analysis.h"

class ZnDbCenterMarkPatternObjectWrapper;
class ZnPatternDrawing;

class TORVI_EXPORT ZnDbCenterMarkPatternLayout : public ZnDbTorviLayout {
public:
  // Type, reference edge and flags come from the object; without one all are undecided.
  explicit ZnDbCenterMarkPatternLayout(ZnDbObjectId centerObject);
  ZnDbCenterMarkPatternLayout(const ZnDbCenterMarkPatternLayout&) = delete;
  ZnDbCenterMarkPatternLayout& operator=(const ZnDbCenterMarkPatternLayout&) = delete;
  ~ZnDbCenterMarkPatternLayout() override;

  // Entities come through createEntitiesForKey alone.
  Quorl::ErrorStatus createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>& keys) override;
  Quorl::ErrorStatus createEntitiesForKey(ZnArray<ZnDbEntity*>& entities, const ZnString& key) override;
  Quorl::ErrorStatus adjustEntities(const ZnArray<ZnDbEntity*>& entities,
                                    const ZnArray<ZnString>& keys) override;
  Quorl::ErrorStatus evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;
  Quorl::ErrorStatus compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) override;

  // Analysis. Circle i is that of edge i; a radius of 0 marks an edge that takes no part. False without any
  // circle. Everything stands in the coordinates of the pattern's space.
  bool loadCircles(const ZnArray<ZnDbEdgeRef>& edges);
  bool analysePattern();
  void adoptPatternType(CenterMarkPatternType type); // decides an undecided pattern, in the object too
  bool allCirclesOnChains(const ZnArray<ZnDbEdgeRef>& edges);
  // Of the user's edges, which stand first, and the candidates behind them keeps those that make the better
  // pattern. False, and nothing removed, when fewer than three fit.
  bool fitCandidateEdges(ZnArray<ZnDbEdgeRef>& edges, int userCount);

  // What the last analysis found; chains and curves are at most one, and the curve is the layout's.
  CenterMarkPatternType patternType() const { return settings_.patternType; }
  bool fullPcd() const { return settings_.fullPcd; }
  int referenceKind() const { return pattern_.reference.kind; }
  int circleCount() const { return pattern_.circles.length(); }
  const ZnArray<ZnGeCircArc3d>& circles() const { return pattern_.circles; }
  ZnArray<ZnArray<int>> memberChains() const;
  ZnArray<const ZnGeCurve3d*> majorCurves() const;
  const ZnArray<ZnString>& centerLineKeys() const { return centerLineKeys_; }
  void setCenterObject(ZnDbObjectId id);

protected:
  // What the object, or who makes one, says of the pattern. The analysis settles what is left open.
  struct Settings {
    CenterMarkPatternType patternType = kCenterPatternNone;
    ZnDbEdgeRef referenceEdge;
    double referencePickParam = -1.0;
    bool fullPcd = false;
    bool showPitchCenterMark = false;
    bool autoFullPcd = false;
  };

  // A layout that reads nothing from the drawing.
  ZnDbCenterMarkPatternLayout(CenterMarkPatternType type, const ZnDbEdgeRef& referenceEdge, double pickParam,
                              bool fullPcd, bool showCenterMark, bool autoFullPcd);

  // Moves the origin of the drawn curves to the pattern; false leaves them in the space's coordinates.
  virtual bool computeBlockTransform(const ZnArray<ZnGeCurve3d*>& curves, const ZnArray<ZnString>& keys);
  virtual ZnPatternMembers collectMembersOnCurve(const ZnGeCurve2d& curve, ZnPatternCenters& centers) const;
  // Whether a reference edge that does not fit is dropped (true) or fails the analysis.
  virtual bool isReferenceEdgeOptional() const { return true; }

  Quorl::ErrorStatus keepLinearDirection(); // also reads the stored keys
  void rebuildCenterLineKeys();
  Quorl::ErrorStatus generatePattern(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);

  Settings settings_;
  ZnPatternAnalysis pattern_;
  ZnArray<ZnString> centerLineKeys_;

private:
  using WrapperPointer = ZnDbTorviObjectPointer<ZnDbCenterMarkPatternObjectWrapper>;
  const WrapperPointer& wrapper() const;

  bool analyse(int fixedCenterCount);
  int countFittingEdges(const ZnArray<ZnDbEdgeRef>& edges, int userCount, ZnArray<int>& left);

  Quorl::ErrorStatus loadPattern();
  Quorl::ErrorStatus syncStoredCenterLineKey();
  Quorl::ErrorStatus cacheAxisMembers();
  ZnPatternDrawing drawingInBlock(const ZnArray<ZnGeCurve3d*>& curves, const ZnArray<ZnString>& keys);

  mutable std::unique_ptr<WrapperPointer> wrapper_;
};
