// The table of the companion's commands. All work on the working drawing.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// What every command needs; eNoDatabase, and a message, without a drawing.
Quorl::ErrorStatus workingDatabase(ZnRxCommandContext& context, ZnDbDatabase*& database);

// Adds all commands under one group; a name that another module has taken is left to it. Removing takes away
// the whole group.
void addCommands();
void removeCommands();

} // namespace companion
