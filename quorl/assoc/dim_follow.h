// How each kind of dimension follows the geometry that it measures.
#pragma once

#include <vector>

#include "quorl/db/entity/dimension.h"
#include "quorl/ge/circ_arc3d.h"

// Puts the dimension on the circle; its direction and leader stay. eWrongObjectClass for a kind of dimension
// that measures no circle.
Quorl::ErrorStatus zndbFollowCircle(ZnDbDimension& dimension, const ZnGeCircArc3d& circle);
// Moves the point of that index (0 and 1 are the ends of an aligned dimension, whose line keeps its distance
// from them). eWrongObjectClass for a kind without such points, eOutOfRange for another index.
Quorl::ErrorStatus zndbFollowPoint(ZnDbDimension& dimension, int index, const ZnGePoint3d& point);
// Model space geometry seen through a viewport is measured where it shows on the sheet; other paths stay as
// they are.
ZnGeMatrix3d zndbToSheet(const ZnDbCompoundObjectId& path);
