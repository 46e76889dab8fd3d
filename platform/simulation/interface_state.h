// The wireless interfaces of the simulated device: the state files "sim/interfaces/<interface>/<setting>", which
// lay_out makes.
//
// Settings: up, ssid, broadcast_ssid, channel, beacon_interval, dtim_period, rts_threshold, frag_threshold, coexist,
// radio_mode, auth_type, local_bridging, country, mac_offset (from the factory record's hardware address), mib/use40M
// (channel width: 0: 20 MHz, 1: 40 MHz, 2: 80 MHz).

#ifndef PLATFORM_SIMULATION_INTERFACE_STATE_H
#define PLATFORM_SIMULATION_INTERFACE_STATE_H

#include <cstddef>
#include <span>

/// All of them, a radio's own before its VAPs'.
std::span<const char* const> simInterfaces();

bool simIsInterface(const char* name);

/// The setting as text, terminated within `size` bytes; empty where there is no such file.
void simInterfaceText(const char* interface, const char* setting, char* buffer, std::size_t size);

/// The setting as a decimal number; 0 where it is none.
int simInterfaceNumber(const char* interface, const char* setting);

bool simSetInterfaceText(const char* interface, const char* setting, const char* text);

bool simSetInterfaceNumber(const char* interface, const char* setting, int value);

#endif
