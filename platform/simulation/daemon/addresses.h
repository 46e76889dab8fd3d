// The addresses of the access point's interfaces.

#ifndef PLATFORM_SIMULATION_DAEMON_ADDRESSES_H
#define PLATFORM_SIMULATION_DAEMON_ADDRESSES_H

#include <cstdint>

#include "platform/simulation/daemon/wtp_config.h"

/// Puts the configured address on the wire: the static one, or what the network leases by its state "network/lease".
void takeAddress(const WtpConfig& config);

/// What stands on the wire now, in host byte order; 0: none.
uint32_t ownAddress();

#endif
