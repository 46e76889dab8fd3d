// The daemon's answers about the networks, their stations and the radios.

#ifndef PLATFORM_SIMULATION_DAEMON_VAP_INFO_H
#define PLATFORM_SIMULATION_DAEMON_VAP_INFO_H

#include "platform/simulation/daemon/reply_bytes.h"

Bytes vapReply(bool linkRuns);

Bytes stationReply(bool linkRuns);

Bytes radioReply();

#endif
