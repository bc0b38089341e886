// Points and vectors as values of members.
#pragma once

#include "quorl/ge/point3d.h"
#include "quorl/ge/vector3d.h"
#include "quorl/rx/value_type.h"

ZNRX_DECLARE_VALUE_TYPE(ZnGePoint3d)
ZNRX_DECLARE_VALUE_TYPE(ZnGeVector3d)
