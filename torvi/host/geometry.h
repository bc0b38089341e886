// The host's geometry, as the module needs it.
#pragma once

#include "quorl/ge/circ_arc2d.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/circumcenter.h"
#include "quorl/ge/context.h"
#include "quorl/ge/curve3d.h"
#include "quorl/ge/double_double.h"
#include "quorl/ge/interval.h"
#include "quorl/ge/line2d.h"
#include "quorl/ge/line3d.h"
#include "quorl/ge/line_seg3d.h"
#include "quorl/ge/matrix3d.h"
#include "quorl/ge/plane.h"
#include "quorl/ge/point2d.h"
#include "quorl/ge/point3d.h"
#include "quorl/ge/point_on_curve3d.h"
#include "quorl/ge/tol.h"
#include "quorl/ge/vector2d.h"
#include "quorl/ge/vector3d.h"

static_assert(ZnGe::kCircularArc3d == 11 && ZnGe::kLine3d == 19 && ZnGe::kLineSeg3d == 23);
