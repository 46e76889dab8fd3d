// The daemon's debug output.

#ifndef PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H
#define PLATFORM_SIMULATION_DAEMON_DEBUG_LINE_H

/// Logs `text` where the switch of the daemon's submodule `name` is on.
void debugLine(const char* name, const char* text);

#endif
