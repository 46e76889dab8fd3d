// How long a session waits for a line.

#ifndef SHELL_IDLE_TIMEOUT_H
#define SHELL_IDLE_TIMEOUT_H

/// Holds the seconds as a decimal number on its first line.
inline constexpr char kIdleTimeoutFile[] = "/etc/admin-timeout.tmp";

/// Reads the seconds from the file; 0 means no limit. Returns 300 if there is no file or it is empty.
unsigned readIdleTimeout();

#endif
