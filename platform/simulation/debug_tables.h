// The applications and kernel modules of the simulated access point.

#ifndef PLATFORM_SIMULATION_DEBUG_TABLES_H
#define PLATFORM_SIMULATION_DEBUG_TABLES_H

#include "platform/debug_library.h"

/// The names, indexed by the id of the application or kernel module. The elements of app_debug and kmod_debug with the
/// same index hold the submodules. The ids of the submodules of each module count from 0.
extern const char* const kSimAppNames[kDebugAppCount];
extern const char* const kSimKernelModuleNames[kDebugKernelModuleCount];

#endif
