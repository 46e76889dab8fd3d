// Keeps a worker running.

#ifndef PLATFORM_SIMULATION_DAEMON_SUPERVISOR_H
#define PLATFORM_SIMULATION_DAEMON_SUPERVISOR_H

#include <sys/types.h>

/// Runs workers one after the other, until this process is told to end or nobody is left: the last terminal of the
/// device is closed, or where none was open at the start, the parent has ended. A worker's process id stands in the
/// device file "/tmp/cwWtpd.pid"; one that died of a fault leaves a crash record. The worker does not keep `lock`, the
/// descriptor that marks this device's daemon as running. Returns the process's exit status.
int superviseWorkers(int lock, pid_t parent);

#endif
