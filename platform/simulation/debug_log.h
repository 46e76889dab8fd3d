// The logs of the debug library, one line for each entry.

#ifndef PLATFORM_SIMULATION_DEBUG_LOG_H
#define PLATFORM_SIMULATION_DEBUG_LOG_H

inline constexpr char kSimLog[] = "/sim/debug_log";
inline constexpr char kSimKernelLog[] = "/sim/kernel_log";
inline constexpr char kSimCrashes[] = "/sim/crashes";

/// The time of its construction, as "2026-01-31 23:59:59 UTC".
struct SimTime {
    SimTime();

    char text[24];
};

/// Appends a line to a log. Truncates the log first if it is too long.
void simAddToLog(const char* devicePath, const char* line);

/// Opens a file of the debug library; creates it if it is missing. The caller closes it. -1 if it cannot be opened.
int simOpenDebugFile(const char* devicePath, int flags);

#endif
