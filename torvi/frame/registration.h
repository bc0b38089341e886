// The table of everything that the module registers with the host, and the order in which it comes and goes.
#pragma once

// Kinds, run-time classes, reactors, overrules. What stands already is left as it is.
void registerTorvi();
// Takes all of it away again, so that the next start makes it anew.
void withdrawTorvi();
