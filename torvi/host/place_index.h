// Finding points and boxes by where they are.
#pragma once

#include "quorl/ge/place_index.h"
