// The six curves of a center mark, or those of a pattern's member, in the order of ZnCenterMarkSubEntType.
// The curves are new and the caller's; directions of the lines are part of the contract: away from the center
// the left and bottom lines start, the right and top lines end.
#pragma once

#include <array>

#include "torvi/centermark/props_provider_interface.h"

// How far the left, right, bottom and top lines reach from the center: a length, minus a
// ZnCenterMarkSubEntType for the stored values of that line, or kArmUnset for circle plus style's overshoot.
using ZnCenterMarkArmLengths = std::array<double, 4>;
constexpr double kArmUnset = 1e60;
constexpr ZnCenterMarkArmLengths kStoredArmLengths = {-eLeftLine, -eRightLine, -eBottomLine, -eTopLine};

// Curves in the coordinates of the block, under the given transform or else the reference's own. The status
// is that of finding the mark and its circle, or eInvalidInput for a circle of radius 0.
TORVI_EXPORT Quorl::ErrorStatus generateCenterMarkCurves(ZnArray<ZnGeCurve3d*>& curves,
                                                         const IZnDbCenterMarkPropsProvider& provider,
                                                         const ZnGeMatrix3d* transform = nullptr);
// The same for a caller who has looked at the mark's circle already: reading it is a good part of the work.
TORVI_EXPORT Quorl::ErrorStatus generateCenterMarkCurves(ZnArray<ZnGeCurve3d*>& curves,
                                                         const IZnDbCenterMarkPropsProvider& provider,
                                                         const ZnGeMatrix3d& transform,
                                                         const ZnGeCircArc3d& referenceCircle);

// Appends cross and extension lines. Everything is in one coordinate system. x is the direction of the
// horizontal lines; that of the vertical ones is y, else away from the pattern's center, else normal cross x.
// With a pattern center the horizontal lines are arcs around it. eInvalidInput for a circle of radius 0.
TORVI_EXPORT Quorl::ErrorStatus buildCenterMarkCurves(ZnArray<ZnGeCurve3d*>& curves,
                                                      const IZnDbCenterMarkPropsProvider& provider,
                                                      const ZnGeCircArc3d& circle, const ZnGeVector3d& normal,
                                                      const ZnGeVector3d& x, const ZnGeVector3d* y,
                                                      const ZnCenterMarkArmLengths& armLengths,
                                                      const ZnGePoint3d* patternCenter = nullptr);
// Its two halves; a failure of the size rule adds nothing and is given back.
TORVI_EXPORT Quorl::ErrorStatus addCrossHairCurves(ZnArray<ZnGeCurve3d*>& curves,
                                                   const IZnDbCenterMarkPropsProvider& provider,
                                                   const ZnGeCircArc3d& circle, const ZnGeVector3d& normal,
                                                   const ZnGeVector3d& x, const ZnGeVector3d& y,
                                                   const ZnGePoint3d* patternCenter = nullptr);
TORVI_EXPORT Quorl::ErrorStatus addExtensionCurves(ZnArray<ZnGeCurve3d*>& curves,
                                                   const IZnDbCenterMarkPropsProvider& provider,
                                                   const ZnGeCircArc3d& circle, const ZnGeVector3d& normal,
                                                   const ZnGeVector3d& x, const ZnGeVector3d& y,
                                                   const ZnCenterMarkArmLengths& armLengths,
                                                   const ZnGePoint3d* patternCenter = nullptr);

// The piece from one distance to the other along the direction, or along the circle around the pattern center
// on which the mark's center lies; the empty marker for a degenerate one. New, the caller's.
TORVI_EXPORT ZnGeCurve3d* makeCenterMarkCurve(const ZnGePoint3d& center, const ZnGePoint3d* patternCenter,
                                              const ZnGeVector3d& normal, const ZnGeVector3d& direction,
                                              double from, double to, bool degenerate);
// The angle in radians under which a chord, signed, is seen from the center of a circle: half a turn for one
// that does not fit, 0 without a radius.
TORVI_EXPORT double chordToArcAngle(double chord, double radius);
