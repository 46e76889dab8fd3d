// The daemon's debug output.

#ifndef PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H
#define PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H

/// If the switch of the daemon's submodule `name` is on, writes a line to the consoles or to the log, as the output
/// mode says.
[[gnu::format(printf, 2, 3)]] void debugLine(const char* name, const char* format, ...);

/// If the switch of the tunnel module's submodule `name` is on, writes `text` to the log.
void tunnelDebugLine(const char* name, const char* text);

#endif
