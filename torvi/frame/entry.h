// The two exports by which the host's linker knows the module.
#pragma once

#include "torvi/host/export.h"

// Messages are those of ZnRxModuleMessage, others are ignored; always 0.
extern "C" TORVI_EXPORT int znrxEntryPoint(int message, void* argument);
// The interface version of the host for which the module is built.
extern "C" TORVI_EXPORT int znrxGetApiVersion();
