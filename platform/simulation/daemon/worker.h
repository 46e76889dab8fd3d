// The part of the daemon that answers the message channel.

#ifndef PLATFORM_SIMULATION_DAEMON_WORKER_H
#define PLATFORM_SIMULATION_DAEMON_WORKER_H

/// Serves the device's message channel until the process is ended. Returns when it cannot be served, with errno.
///
/// The state file "daemon/behaviour" makes it misbehave, from one query to the next: "silent" never answers, "slow N"
/// answers after N seconds (3), and "crash" faults while answering.
void runWorker();

#endif
