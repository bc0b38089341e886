// The module's run-time classes: the order in which they come and the one in which they go.
#pragma once

// A class that stands already is left as it is; the hierarchy is built at the end.
void registerTorviClasses();
// Finds each by name, deletes it and forgets it, so that the next start makes it anew.
void deleteTorviClasses();
