// The user's settings for center objects. Nothing is kept: every answer is read from the host's system
// variables at the moment of asking, with a fixed fallback.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/runtime.h"

class TORVI_EXPORT ZnTorviStyle {
public:
  // Sizes of new center marks, as length expressions
  static ZnString getCrossHairLengthExpression();
  static ZnString getCrossHairGapExpression();
  static double getCenterOvershoot(); // drawing units
  static bool isCentermarkExeVisible();

  // Traits of new center objects
  // "." in the variable means the working database's current linetype. The default name when there is none.
  static ZnString getCenterLineTypeName();
  static ZnString getCrossHairLineTypeName(); // always "CONTINUOUS"
  static double getCenterLinetypeScale();
  static ZnString getLineTypeFileName();
  // The variable as it stands, for callers outside. New objects find their layer through ZnTorviSetLayer,
  // whose fallback is another one.
  static ZnString getCenterlayer();

  // Length expressions. A last "x" makes an expression relative; its number goes to the factor, else to the
  // length. The other one gets its neutral value, an unreadable number counts as 0, and isRelative is only
  // ever set, so callers start it at false.
  static void getLengthExpressionInfo(const ZnString& expression, bool& isRelative, double& factor,
                                      double& length);
  // A relative expression's factor times the base; "ByLinetype" is no length and gives 0.
  static double getLengthFromExpression(double base, const ZnString& expression);
};

namespace torvi {

// Whether new marks on arcs of a short span go without extension lines.
bool isArcSpanChecked();

} // namespace torvi
