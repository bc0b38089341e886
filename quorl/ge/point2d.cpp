#include "quorl/ge/point2d.h"

#include "quorl/ge/matrix2d.h"

ZnGePoint2d& ZnGePoint2d::transformBy(const ZnGeMatrix2d& matrix) { return *this = matrix * *this; }
