// What goes through the interfaces.

#ifndef PLATFORM_SIMULATION_DAEMON_TRAFFIC_H
#define PLATFORM_SIMULATION_DAEMON_TRAFFIC_H

#include <cstdint>

/// Adds what `seconds` bring to the state "traffic", which has a line for each interface: its name, packets and bytes
/// received, packets and bytes sent.
void countTraffic(uint64_t seconds, bool linkRuns);

#endif
