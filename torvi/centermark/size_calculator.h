// Resolves the two length expressions of a center mark against its circle, or its linetype, to lengths in
// drawing units. Shared by marks and patterns.
#pragma once

#include "torvi/centermark/props_provider_interface.h"
#include "torvi/style/center_mark_utils.h"

struct TORVI_EXPORT ZnDbCenterMarkSizeCalculator {
  explicit ZnDbCenterMarkSizeCalculator(const IZnDbCenterMarkPropsProvider& from)
      : provider(from) {}

  // A radius of exactly 0 asks the provider for the circle's. Always eOk: a linetype without a usable pattern
  // falls back to fixed expressions.
  Quorl::ErrorStatus calculateSizes(double radius);

  double crossLength = 0.5; // of a whole arm
  double crossGap = 0.5;    // between the end of an arm and the start of an extension line
  const IZnDbCenterMarkPropsProvider& provider;
  ZnCenterMarkSizeConverter sizeConvertor = ZnDbCenterMarkUtils::expressionToSizeConvertor();
};

// The outs stay as they are on failure.
TORVI_EXPORT Quorl::ErrorStatus getCrossLengthAndGapFromProvider(const IZnDbCenterMarkPropsProvider& provider,
                                                                 double& length, double& gap, double radius);

// Cross and gap from the dashes of the mark's linetype, at its scale. The outs change even on failure:
// eNothingToDo for a linetype that gives no sizes, else the status of reading it.
TORVI_EXPORT Quorl::ErrorStatus getLinetypeCrossSizes(double& cross, double& gap,
                                                      const IZnDbCenterMarkPropsProvider& provider);
// Unscaled: the last dash, the last gap, the length of the pattern. eNothingToDo for a linetype of less than
// two elements, with dots, shapes or texts, or without a dash.
TORVI_EXPORT Quorl::ErrorStatus readLinetypePattern(double& dash, double& gap, double& total,
                                                    bool& scaledToFit, ZnDbObjectId linetype);
TORVI_EXPORT bool isPlainDashLinetype(const ZnDbLinetypeTableRecord& record);
// The scale at which half a cross, a gap and a whole number of pattern repeats, at least two, fill the
// length; 1 when half the cross and the gap alone do.
TORVI_EXPORT double fitPatternRepeat(double length, double total, double halfCross, double gap);
// The mark's linetype, that of its layer when it is by layer.
TORVI_EXPORT ZnDbObjectId getEffectiveLinetypeId(const IZnDbCenterMarkPropsProvider& provider);
