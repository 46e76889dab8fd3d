// The daemon's answers, one function for each query.

#ifndef PLATFORM_SIMULATION_DAEMON_REPLIES_H
#define PLATFORM_SIMULATION_DAEMON_REPLIES_H

#include "platform/simulation/daemon/controller_link.h"
#include "platform/simulation/daemon/reply_bytes.h"
#include "platform/simulation/daemon/wtp_config.h"

Bytes vapReply(bool linkRuns);

Bytes accessPointReply(const WtpConfig& config, const ControllerLink::Status& link);

Bytes stationReply(bool linkRuns);

Bytes radioReply();

#endif
