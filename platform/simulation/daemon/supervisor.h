// Keeps a worker running.

#ifndef PLATFORM_SIMULATION_DAEMON_SUPERVISOR_H
#define PLATFORM_SIMULATION_DAEMON_SUPERVISOR_H

#include <sys/types.h>

/// Starts a worker, and another one each time a worker ends. Stops the worker and returns the exit status for this
/// process in these cases: a signal asks this process to end; a worker cannot be started or cannot serve the channel;
/// the last terminal of the device is closed. If no terminal was open at the start, the last case is instead: the
/// parent process `parent` has ended.
///
/// The device file "/tmp/cwWtpd.pid" holds the process id of the worker. If a fault ends a worker, adds a crash record.
/// The file descriptor `lock` holds the advisory lock that marks this device's daemon as running; the worker closes its
/// copy.
int superviseWorkers(int lock, pid_t parent);

#endif
