// The daemon's debug output.

#ifndef PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H
#define PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H

/// Says a line where the switch of the daemon's submodule `name` is on: to the consoles or the log, by the output mode.
[[gnu::format(printf, 2, 3)]] void debugLine(const char* name, const char* format, ...);

/// Logs `text` where the switch of the tunnel module's submodule `name` is on.
void tunnelDebugLine(const char* name, const char* text);

#endif
