// What all geometry of a process shares.
#pragma once

#include "quorl/ge/tol.h"

struct ZnGeContext {
  // Default of every operation that takes a tolerance. Initialised before any dynamic initialiser runs.
  // A program may set it once at its start, before other threads compute.
  static ZnGeTol gTol;
};
