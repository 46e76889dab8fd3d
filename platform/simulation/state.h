// The simulated device's state: small text files in the folder "sim" of its root, one value each. They may be read
// while the shell runs. docs/simulation.md lists those that a user may also write. The device writes these files:
//
//     booted                        time of the start, in seconds since 1970
//     consoles/<process>            a symbolic link to the terminal of the shell with this process id
//     idle_ends/<process>           the idle time of a shell that it has ended; scripts/run prints and removes it
//     hostname                      the host name in use; a reboot sets it to the configured one
//     traffic                       the counters of each interface
//     debug_*, kernel_log, crashes  switches, logs and records of the debug library
//     reboots, password_changes     how often each happened
//     oem_mode, cw_debug, firmware* written by the tools oem_init, cw_debug and restore

#ifndef PLATFORM_SIMULATION_STATE_H
#define PLATFORM_SIMULATION_STATE_H

#include <cstddef>

/// Reads the value `name` (for example "interfaces/wlan0/up") without its line feed. If there is no such file, copies
/// `fallback` and returns false.
bool simReadText(const char* name, char* buffer, std::size_t size, const char* fallback);

/// Reads the value `name` as a decimal number. Returns `fallback` if there is no such file.
int simReadNumber(const char* name, int fallback);

/// Replaces the value. Creates missing folders. Returns false if it cannot be written.
bool simWriteText(const char* name, const char* text);

bool simWriteNumber(const char* name, int value);

#endif
