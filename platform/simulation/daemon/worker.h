// The part of the daemon that answers the message channel.

#ifndef PLATFORM_SIMULATION_DAEMON_WORKER_H
#define PLATFORM_SIMULATION_DAEMON_WORKER_H

/// Serves the device's message channel until a signal ends the process. If the channel cannot be served, returns and
/// leaves the reason in errno.
///
/// The state file "daemon/behaviour" simulates faults from the next query on: "silent" never answers, "slow N" answers
/// after N seconds (3 if N is missing), and "crash" ends the process by a memory fault.
void runWorker();

#endif
