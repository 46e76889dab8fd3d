// Keeps a worker running.

#ifndef PLATFORM_SIMULATION_DAEMON_SUPERVISOR_H
#define PLATFORM_SIMULATION_DAEMON_SUPERVISOR_H

#include <sys/types.h>

/// Starts a worker, and another one each time a worker ends. Returns the exit status of the process when a signal ends
/// it, or when the last terminal of the device is closed; if no terminal was open at the start, when the parent process
/// ends. The device file "/tmp/cwWtpd.pid" holds the process id of the worker. A worker that ends by a fault leaves a
/// crash record. The descriptor `lock` marks this device's daemon as running; the worker closes it.
int superviseWorkers(int lock, pid_t parent);

#endif
