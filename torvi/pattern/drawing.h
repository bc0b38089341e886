// What is drawn of an analysed pattern, in the order in which it stands in the block: the members' marks, the
// pieces between neighbours, the mark on the pitch center, and the whole curve, which nobody sees.
#pragma once

#include "torvi/centermark/mark_curves.h"
#include "torvi/pattern/analysis.h"
#include "torvi/pattern/props_provider.h"

// How far the center line runs beyond its outer members' circles, and arms of all members beyond theirs.
struct ZnPatternOvershoots {
  double start = 0.0, end = 0.0, member = 0.0;
};

// Curves are new and the caller's, in the coordinates of the pattern that is given; keys run beside them.
// Marks have the sizes and arms of the center object, or those of the style for a null one.
class ZnPatternDrawing {
public:
  ZnPatternDrawing(ZnPatternAnalysis pattern, ZnDbObjectId centerObject, bool showPitchCenterMark,
                   const ZnPatternOvershoots& overshoots);

  void generate(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const; // all but the whole curve
  void generateMemberMarks(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;
  void generatePitchCenterMark(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;
  void appendMajorCurves(const ZnString& key, ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;

private:
  void generateSegments(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const;
  struct CrossSize {
    double half = 0.25, gap = 0.5;
  };
  bool isPolar() const { return pattern_.patternType == kCenterPatternPolar; }
  CrossSize crossSizeOf(double radius) const;
  double pieceOffset(double radius) const;
  double storedArm(size_t axis) const; // as an arm length
  ZnCenterMarkArmLengths memberArms(int index) const;
  ZnGeCurve3d* makeSegment(int from, int to, double fromOffset, double toOffset) const;
  ZnGeCurve3d* extendedMajorCurve() const;

  ZnPatternAnalysis pattern_;
  bool showPitchCenterMark_;
  ZnPatternOvershoots overshoots_;
  ZnPatternPropsProvider provider_;
  ZnGeVector3d planeDirection_;
  ZnGeVector3d majorDirection_; // along which marks are laid
  ZnGePoint3d pitchCenter_;
};
