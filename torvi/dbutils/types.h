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

enum CenterMarkPatternType : int {
  kCenterPatternNone = 0,
  kCenterPatternPolar = 1,
  kCenterPatternLinear = 2,
};
