// How long a session waits for a line.

#ifndef SHELL_IDLE_TIMEOUT_H
#define SHELL_IDLE_TIMEOUT_H

/// Holds the seconds as a decimal number on its first line.
inline constexpr char kIdleTimeoutFile[] = "/etc/admin-timeout.tmp";

/// The file's seconds, 0: for ever. Without a file, or with an empty one, 300.
unsigned readIdleTimeout();

#endif
