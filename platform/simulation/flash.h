// What the simulated flash says of the access point.

#ifndef PLATFORM_SIMULATION_FLASH_H
#define PLATFORM_SIMULATION_FLASH_H

#include "platform/flash_layout.h"

/// The factory record. A MAC address and a serial number that the flash does not hold are those of the factory's ROM
/// file, so that an access point whose flash was erased goes on.
PlatformInfo simIdentity();

#endif
