// The addresses of the access point's interfaces.

#ifndef PLATFORM_SIMULATION_DAEMON_ADDRESSES_H
#define PLATFORM_SIMULATION_DAEMON_ADDRESSES_H

#include <cstdint>

#include "platform/simulation/daemon/wtp_config.h"

/// Sets the address of eth0: the configured one, or the lease of the state file "network/lease".
void takeAddress(const WtpConfig& config);

/// The address of eth0, in host byte order; 0: none.
uint32_t ownAddress();

#endif
