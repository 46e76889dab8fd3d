// The traffic counters of the interfaces.

#ifndef PLATFORM_SIMULATION_DAEMON_TRAFFIC_H
#define PLATFORM_SIMULATION_DAEMON_TRAFFIC_H

#include <cstdint>

/// Adds the traffic of `seconds` to the state file "traffic". It has a line for each interface: name, packets and bytes
/// received, packets and bytes sent.
void countTraffic(uint64_t seconds, bool linkRuns);

#endif
