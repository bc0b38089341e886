// What a user sees of a center object, so that two can be compared wherever they stand and whoever made them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "torvi/host/association.h"

struct SeenCurve {
  ZnGePoint3d start, middle, end; // in the coordinates of the space; either end may come first
  std::string traits;             // linetype, weight, scale, layer
};

struct Portrait {
  std::vector<SeenCurve> curves; // in no order, hidden ones left out
  std::string object;            // association, and the traits of the object as a whole

  Portrait moved(const ZnGeMatrix3d& by) const;
};

Portrait portraitOf(ZnDbObjectId center);
enum class PortraitPart { kAll, kPlaces };
testing::AssertionResult looksLike(ZnDbObjectId center, const Portrait& expected,
                                   PortraitPart part = PortraitPart::kAll);
// The values that an object keeps, one a line, ids left out.
std::string valuesOf(ZnDbObjectId center);
