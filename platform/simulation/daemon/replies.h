// The daemon's answers, one function for each query.

#ifndef PLATFORM_SIMULATION_DAEMON_REPLIES_H
#define PLATFORM_SIMULATION_DAEMON_REPLIES_H

#include "platform/simulation/daemon/controller_link.h"
#include "platform/simulation/daemon/reply_bytes.h"
#include "platform/simulation/daemon/wtp_config.h"

/// As many VAPs as the state file "daemon/vaps" says.
Bytes vapReply(const ControllerLink::Status& link);

Bytes accessPointReply(const WtpConfig& config, const ControllerLink::Status& link);

/// As many stations as the state file "daemon/stations" says, on the VAPs that are up.
Bytes stationReply();

Bytes radioReply();

#endif
