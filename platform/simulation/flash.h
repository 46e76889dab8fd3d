// The factory record in the simulated flash.

#ifndef PLATFORM_SIMULATION_FLASH_H
#define PLATFORM_SIMULATION_FLASH_H

#include "platform/flash_layout.h"

/// The factory record. If the flash has no MAC address or serial number, takes them from the factory's ROM file, so
/// that an access point with an erased flash works.
PlatformInfo simIdentity();

#endif
