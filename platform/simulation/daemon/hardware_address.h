// The hardware addresses of the simulated device.

#ifndef PLATFORM_SIMULATION_DAEMON_HARDWARE_ADDRESS_H
#define PLATFORM_SIMULATION_DAEMON_HARDWARE_ADDRESS_H

#include <array>
#include <cstdint>

using HardwareAddress = std::array<uint8_t, 6>;

/// The factory record's.
HardwareAddress baseAddress();

/// Each radio has sixteen: its own, then its VAPs'.
HardwareAddress vapAddress(unsigned radio, unsigned vap);

#endif
