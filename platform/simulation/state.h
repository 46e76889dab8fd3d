// The simulated device's state: small text files in the folder "sim" of its root, one value each. Anyone may read or
// set them while the shell runs.
//
//     interfaces/<interface>/<setting>   interface_state.h; "address" holds one A.B.C.D/BITS a line, "mib" a folder of
//                                        the driver's other settings
//     bands, channels/<country>          what radios can do, and may; lay_out makes them anew
//     network/lease                      the address that the network gives, A.B.C.D/BITS; empty: none
//     traffic                            what the daemon counts for each interface
//     gpio/<line>, leds/<led>            level, message shown
//     reset_key                          0 while it is pressed
//     serial_number                      in place of the factory record's
//     hostname                           in use, until a reboot takes up the configured one
//     reboots, password_changes          how often
//     oem_mode, cw_debug, flash/<NAME>   what the tools of these names left

#ifndef PLATFORM_SIMULATION_STATE_H
#define PLATFORM_SIMULATION_STATE_H

#include <cstddef>

/// Reads the value `name` (for example "interfaces/wlan0/up"), terminated and without its line feed. Where there is no
/// such file the result is false and `buffer` holds `fallback`.
bool simReadText(const char* name, char* buffer, std::size_t size, const char* fallback);

/// The same as a decimal number.
int simReadNumber(const char* name, int fallback);

/// Replaces the value, making the folders on its way. False when it cannot be written.
bool simWriteText(const char* name, const char* text);

bool simWriteNumber(const char* name, int value);

#endif
