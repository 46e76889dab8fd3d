// The hardware addresses of the simulated device.

#ifndef PLATFORM_SIMULATION_DAEMON_HARDWARE_ADDRESS_H
#define PLATFORM_SIMULATION_DAEMON_HARDWARE_ADDRESS_H

#include <array>
#include <cstdint>
#include <string>

using HardwareAddress = std::array<uint8_t, 6>;

/// The factory record's.
HardwareAddress baseAddress();

/// The base, its last byte moved on by what the interface's state says.
HardwareAddress interfaceAddress(const std::string& interface);

#endif
