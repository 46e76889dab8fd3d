// What the simulated daemon adds to the debug library's shared state.

#ifndef PLATFORM_SIMULATION_DEBUG_STATE_H
#define PLATFORM_SIMULATION_DEBUG_STATE_H

/// Says a line for a submodule of an application whose switch is on, where the output mode sends it: to the consoles or
/// to the log. Dropped otherwise.
void simDebugLog(int app, int submodule, const char* text);

/// The same for a submodule of a kernel module, always to the kernel's log.
void simKernelDebugLog(int kernelModule, int submodule, const char* text);

/// Adds a crash record: the time and the first line of `text`, 99 characters at most.
void simRecordCrash(const char* text);

#endif
