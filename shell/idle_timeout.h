// The idle time of a session.

#ifndef SHELL_IDLE_TIMEOUT_H
#define SHELL_IDLE_TIMEOUT_H

/// The file of the idle time: seconds, as a decimal number on the first line.
inline constexpr char kIdleTimeoutFile[] = "/etc/admin-timeout.tmp";

/// Reads the seconds from the file; 0 means no limit. Returns 300 if there is no file or it is empty.
unsigned readIdleTimeout();

#endif
