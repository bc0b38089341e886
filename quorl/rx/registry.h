// The dictionary of the process, where the host's single objects are found by name.
#pragma once

#include "quorl/rx/dictionary.h"

// Holds "DynamicLinker" (ZnRxDynamicLinker), "ServiceDictionary" (the services by name) and
// "ClassDictionary" (the run-time classes); the layers above add their own. It lives as long as the process.
ZnRxDictionary* znrxSysRegistry();
