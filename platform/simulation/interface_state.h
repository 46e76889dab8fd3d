// The interfaces of the simulated device: the state files "sim/interfaces/<interface>/<setting>", which rcS makes.
//
// - All interfaces have up and address (A.B.C.D/BITS, one address a line).
// - Wireless interfaces also have ssid, broadcast_ssid, dtim_period, rts_threshold, frag_threshold, auth_type,
//   local_bridging, mac_offset (added to the hardware address of the factory record), and served (0 if the daemon does
//   not serve the VAP).
// - Radios also have channel, coexist, beacon_interval, country, power (in per cent), radar (the channels on which
//   radar was detected), mib/band, and mib/use40M (the channel width: 0 is 20 MHz, 1 is 40 MHz, 2 is 80 MHz).
//   radio_state.h computes the state of a radio from these settings.

#ifndef PLATFORM_SIMULATION_INTERFACE_STATE_H
#define PLATFORM_SIMULATION_INTERFACE_STATE_H

#include <array>
#include <cstddef>
#include <cstdint>

bool simIsInterface(const char* name);

/// The hardware address: that of the factory record, with the setting mac_offset added to the last byte.
std::array<uint8_t, 6> simHardwareAddress(const char* interface);

/// Whether an interface is up and served by the daemon. For a VAP its radio must be up, too.
bool simInterfaceRuns(const char* name);

/// The setting as text, terminated within `size` bytes; empty where there is no such file.
void simInterfaceText(const char* interface, const char* setting, char* buffer, std::size_t size);

/// The setting as a decimal number; 0 if it is not a number or there is no such file.
int simInterfaceNumber(const char* interface, const char* setting);

bool simSetInterfaceText(const char* interface, const char* setting, const char* text);

bool simSetInterfaceNumber(const char* interface, const char* setting, int value);

#endif
