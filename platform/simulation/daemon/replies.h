// The daemon's answers, one function for each query.

#ifndef PLATFORM_SIMULATION_DAEMON_REPLIES_H
#define PLATFORM_SIMULATION_DAEMON_REPLIES_H

#include "platform/simulation/daemon/controller_link.h"
#include "platform/simulation/daemon/record_writer.h"
#include "platform/simulation/daemon/wtp_config.h"

/// Query 1: as many VAPs as the state file "daemon/vaps" says.
Bytes vapReply(const WtpConfig& config, const ControllerLink::Status& link);

/// Query 2.
Bytes accessPointReply(const WtpConfig& config, const ControllerLink::Status& link);

/// Query 3: as many stations as the state file "daemon/stations" says, on the VAPs that are up.
Bytes stationReply();

/// Query 5.
Bytes radioReply();

#endif
