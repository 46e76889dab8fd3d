// Running the system's tools.

#ifndef SHELL_TOOLS_H
#define SHELL_TOOLS_H

#include <cstddef>
#include <span>

/// Longest command line handed to the system shell, without its terminator.
inline constexpr std::size_t kCommandLength = 1024;

/// Composes a command line. One that does not fit `buffer` is refused with a message: false, and the buffer is empty.
[[gnu::format(printf, 2, 3)]] bool composeCommand(std::span<char> buffer, const char* format, ...);

/// Says what was said before, then runs `command` with the system shell; the terminal is as it was found when it ends.
/// If an interrupt ends the system shell, the line is interrupted. Returns the wait status, -1 if none.
int runCommand(const char* command);

/// Composes a command line of at most kCommandLength characters and runs it. A refused one returns -1.
[[gnu::format(printf, 1, 2)]] int runCommandf(const char* format, ...);

#endif
