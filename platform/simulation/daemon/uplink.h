// The wire, eth0, and the access point's own address on it.

#ifndef PLATFORM_SIMULATION_DAEMON_UPLINK_H
#define PLATFORM_SIMULATION_DAEMON_UPLINK_H

#include <cstdint>

#include "platform/simulation/daemon/wtp_config.h"

/// Puts the configured address on the wire: the static one, or what the network leases by its state "network/lease".
void takeAddress(const WtpConfig& config);

/// What stands on the wire now, in host byte order; 0: none.
uint32_t ownAddress();

/// The same while the wire is up; 0: nothing can be reached.
uint32_t reachingAddress();

#endif
