// The interfaces of the simulated device: the state files "sim/interfaces/<interface>/<setting>", which rcS makes.
//
// Settings: up, address (A.B.C.D/BITS, one a line); of the wireless ones also ssid, broadcast_ssid, dtim_period,
// rts_threshold, frag_threshold, auth_type, local_bridging, mac_offset (from the factory record's hardware address),
// served (0: the daemon does not serve the VAP). Only radios have channel, coexist, beacon_interval, country, power
// (per cent), radar (channels where it was seen), mib/band and mib/use40M (width: 0: 20 MHz, 1: 40 MHz, 2: 80 MHz);
// radio_state.h computes the state of a radio from them.

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

/// The setting as a decimal number; 0 where it is none.
int simInterfaceNumber(const char* interface, const char* setting);

bool simSetInterfaceText(const char* interface, const char* setting, const char* text);

bool simSetInterfaceNumber(const char* interface, const char* setting, int value);

#endif
