// Finds out what a set of circles and arcs is a pattern of (which share a pitch circle or a line, in which
// order, where the chain begins, whether it is closed) and turns that into curves and keys.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <vector>

#include "torvi/core/layout.h"
#include "torvi/core/object_pointer.h"
#include "torvi/pattern/action_body.h"

class IZnDbCenterMarkPropsProvider;
class ZnDbCenterMarkPatternObjectWrapper;

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

  // What the last analysis found
  CenterMarkPatternType patternType() const { return patternType_; }
  bool fullPcd() const { return fullPitchCircle_; }
  int referenceKind() const { return referenceKind_; }
  int circleCount() const { return circles_.length(); }
  const ZnArray<ZnGeCircArc3d>& circles() const { return circles_; }
  const ZnArray<ZnArray<int>>& memberChains() const { return memberChains_; }
  const ZnArray<ZnGeCurve3d*>& majorCurves() const { return majorCurves_; }
  const ZnArray<ZnString>& centerLineKeys() const { return centerLineKeys_; }
  const std::array<int, 4>& axisMembers() const { return axisMembers_; }
  void setCenterObject(ZnDbObjectId id);

protected:
  // A layout that reads nothing from the drawing.
  ZnDbCenterMarkPatternLayout(CenterMarkPatternType type, const ZnDbEdgeRef& referenceEdge, double pickParam,
                              bool fullPcd, bool showCenterMark, bool autoFullPcd);

  // Moves the origin of the drawn curves to the pattern; false leaves them in the space's coordinates.
  virtual bool computeBlockTransform(const ZnArray<ZnGeCurve3d*>& curves, const ZnArray<ZnString>& keys);
  // Fills curveMembers_; centers on the curve within patternTolerance_.
  virtual void collectMembersOnCurve(const ZnGeCurve2d& curve);
  // Whether a reference edge that does not fit is dropped (true) or fails the analysis.
  virtual bool isReferenceEdgeOptional() const { return true; }

  Quorl::ErrorStatus keepLinearDirection(); // also reads the stored keys
  void rebuildCenterLineKeys();
  Quorl::ErrorStatus generatePattern(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);

  CenterMarkPatternType patternType_ = kCenterPatternNone;
  ZnDbEdgeRef referenceEdge_;
  double referencePickParam_ = -1.0;
  bool fullPitchCircle_ = false;
  bool showPitchCenterMark_ = false;
  bool autoFullPitchCircle_ = false;
  int referenceKind_ = 0; // 0 none, 1 arc, 2 line
  ZnGeTol patternTolerance_;
  ZnArray<ZnGeCircArc3d> circles_;
  ZnGePlane patternPlane_;
  ZnGeVector3d planeDirection_;
  ZnGeVector3d majorDirection_;
  ZnGePoint3d pitchCenter_;
  ZnArray<ZnGePoint2d> centers2d_;    // accepted centers, in plane coordinates
  ZnArray<int> centerIndices_;        // their circles
  ZnArray<ZnGeCurve3d*> majorCurves_; // owned until they are handed out; at most one
  ZnArray<ZnArray<int>> memberChains_;
  ZnArray<ZnString> centerLineKeys_;
  std::map<double, int> curveMembers_; // parameter on the curve under test to position in centers2d_
  std::array<int, 4> axisMembers_ = {-1, -1, -1, -1};
  double referenceStartAngle_ = -1.0;
  int fixedCenterCount_ = 0;

private:
  using WrapperPointer = ZnDbTorviObjectPointer<ZnDbCenterMarkPatternObjectWrapper>;
  const WrapperPointer& wrapper() const;

  // Analysis, in the order of its steps
  void collectCenters();
  bool isInsideAnother(const ZnGeCircArc3d& circle) const; // or concentric with it
  bool resolveReferenceEdge();
  void noteReferencePick(const ZnGeCircArc3d& arc);
  bool fitPolarPattern();
  bool findPitchCenter(ZnGePoint2d& center) const;
  bool pitchCenterFromBlock(ZnGePoint2d& center) const;
  void refinePitchCircle(ZnGePoint2d& center, double& radius);
  bool orderAroundCircle(const ZnGeCircArc2d& circle, ZnArray<int>& chain);
  void boundPitchArc(ZnGeCircArc3d& arc, const ZnArray<int>& chain) const;
  void findAxisMembers(const ZnGeCircArc3d& arc, const ZnArray<int>& chain);
  bool fitLinearPattern();
  bool findMajorDirection(ZnGeVector2d& direction) const;
  ZnArray<int> chainOfMembers() const; // circles, by ascending parameter
  bool isOnChain(int index) const;
  int countFittingEdges(const ZnArray<ZnDbEdgeRef>& edges, ZnArray<int>& left);

  // Evaluation
  Quorl::ErrorStatus loadPattern();
  Quorl::ErrorStatus syncStoredCenterLineKey();
  Quorl::ErrorStatus cacheAxisMembers();
  // Generation, in block coordinates; the curves are new and the caller's
  using Props = IZnDbCenterMarkPropsProvider;
  struct CrossSize {
    double half = 0.25, gap = 0.5;
  };
  static CrossSize crossSizeOf(const Props& provider, double radius);
  double pieceOffset(const Props& provider, double radius) const;
  double centerLineOvershoot(bool atEnd) const;
  // Arms and axis positions count left, right, bottom, top, but left is where the drawing's x axis comes from
  // and axis position 0 where the plane's own does. Gives the position of an arm and the arm at a position.
  int axisOfArm(int arm) const;
  double storedArm(size_t axis) const; // as an arm length
  std::array<double, 4> memberArms(int index) const;
  void generateMemberMarks(const Props& provider, ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);
  void generateSegments(const Props& provider, ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);
  ZnGeCurve3d* makeSegment(int from, int to, double fromOffset, double toOffset) const;
  void generatePitchCenterMark(const Props& provider, ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);
  void appendMajorCurves(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);
  void extendMajorCurve(ZnGeCurve3d& curve, const ZnString& key, const ZnArray<int>& chain) const;
  bool isFlatInBlock() const;
  Quorl::ErrorStatus generateUnassociated(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys);

  double styleOvershoot_ = 0.0; // as it was when generation began
  mutable std::unique_ptr<WrapperPointer> wrapper_;
};
