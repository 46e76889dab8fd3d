// The daemon's debug output.

#ifndef PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H
#define PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H

/// Logs a line where the switch of the daemon's submodule `name` is on.
[[gnu::format(printf, 2, 3)]] void debugLine(const char* name, const char* format, ...);

/// Logs `text` where the switch of the tunnel module's submodule `name` is on.
void tunnelDebugLine(const char* name, const char* text);

#endif
