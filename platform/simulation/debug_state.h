// What the simulated daemon adds to the debug library's shared state.

#ifndef PLATFORM_SIMULATION_DEBUG_STATE_H
#define PLATFORM_SIMULATION_DEBUG_STATE_H

/// Logs a line for a submodule of an application whose switch is on; dropped otherwise. The line says where the output
/// mode sends it.
void simDebugLog(int app, int submodule, const char* text);

/// The same for a submodule of a kernel module, without the output mode.
void simKernelDebugLog(int kernelModule, int submodule, const char* text);

/// Adds a crash record: the first 99 characters of the first line of `text`.
void simRecordCrash(const char* text);

#endif
