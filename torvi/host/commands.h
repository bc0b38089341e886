// The host's commands and what running one needs: the companion's part of the door.
#pragma once

#include "quorl/db/core/transaction.h"
#include "quorl/rx/command_registry.h"
