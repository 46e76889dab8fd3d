// Running the system's tools.

#ifndef SHELL_TOOLS_H
#define SHELL_TOOLS_H

#include <cstddef>
#include <span>

/// Longest command line handed to the system shell, without its terminator.
inline constexpr std::size_t kCommandLength = 1024;

/// Composes a command line. If it does not fit `buffer`, prints a message, empties the buffer and returns false.
[[gnu::format(printf, 2, 3)]] bool composeCommand(std::span<char> buffer, const char* format, ...);

/// Flushes the standard output, runs `command` with the system shell, and restores the terminal. isInterrupted() is
/// true afterwards if Ctrl-C or the quit key ended the system shell. Returns the wait status, or -1 if it could not
/// run.
int runCommand(const char* command);

/// Composes a command line and runs it. If it has more than kCommandLength characters, prints a message and returns -1.
[[gnu::format(printf, 1, 2)]] int runCommandf(const char* format, ...);

#endif
