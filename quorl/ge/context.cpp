#include "quorl/ge/context.h"

constinit ZnGeTol ZnGeContext::gTol;
