// The daemon's answer about the access point: identity, intervals, state of the link, LAN ports.

#ifndef PLATFORM_SIMULATION_DAEMON_AP_INFO_H
#define PLATFORM_SIMULATION_DAEMON_AP_INFO_H

#include "platform/simulation/daemon/controller_link.h"
#include "platform/simulation/daemon/reply_bytes.h"
#include "platform/simulation/daemon/wtp_config.h"

Bytes accessPointReply(const WtpConfig& config, const ControllerLink::Status& link);

#endif
