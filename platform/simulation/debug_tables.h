// The applications and kernel modules of the simulated access point.

#ifndef PLATFORM_SIMULATION_DEBUG_TABLES_H
#define PLATFORM_SIMULATION_DEBUG_TABLES_H

#include "platform/debug_library.h"

/// Names by id. Their submodules are in app_debug and kmod_debug, whose ids count from 0.
extern const char* const kSimAppNames[kDebugAppCount];
extern const char* const kSimKernelModuleNames[kDebugKernelModuleCount];

#endif
