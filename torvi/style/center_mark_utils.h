// How the sizes of a center mark come from its length expressions, as a rule that callers can replace.
#pragma once

#include <functional>

#include "torvi/style/style.h"

// From a base length in drawing units and an expression to a length.
using ZnCenterMarkSizeConverter = std::function<double(double base, const ZnString& expression)>;

class ZnDbCenterMarkUtils {
public:
  static ZnCenterMarkSizeConverter expressionToSizeConvertor() {
    return &ZnTorviStyle::getLengthFromExpression;
  }
};
