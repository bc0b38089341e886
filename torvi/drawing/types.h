// The numbers that all kinds of center object share with their callers.
#pragma once

// Kind of a center object.
enum ZnDbTorviType : int {
  kTorviNone = 0, // no center object
  kCenterMark = 1,
  kCenterLine = 2,
  kEdgeExtension = 3,
  kCenterMarkPattern = 4,
  kTorviAny = 5, // any kind: a value for asking only
};

// The six lines of a center mark, by their position in its block.
enum ZnCenterMarkSubEntType : int {
  eCrossHairHorizontalLine = 0,
  eCrossHairVerticalLine = 1,
  eLeftLine = 2,
  eRightLine = 3,
  eBottomLine = 4,
  eTopLine = 5,
};

namespace torvi {

// The four lines of a center mark that are not its cross, in the order in which values are kept for them.
inline constexpr ZnCenterMarkSubEntType kExtensionLines[] = {eLeftLine, eRightLine, eBottomLine, eTopLine};
constexpr bool isExtensionLine(ZnCenterMarkSubEntType type) { return type >= eLeftLine && type <= eTopLine; }

} // namespace torvi

// What the members of a pattern share. A grid of holes is a linear pattern over its best row.
enum CenterMarkPatternType : int {
  kCenterPatternNone = 0,   // not decided yet; the first analysis that succeeds decides
  kCenterPatternPolar = 1,  // a pitch circle; center lines are arcs about its center
  kCenterPatternLinear = 2, // a straight line
};
