// What handlers say: the output routine and the shared message buffer.

#ifndef SHELL_OUTPUT_H
#define SHELL_OUTPUT_H

#include <cstddef>

/// Longest message, its terminator included; a longer one is cut.
inline constexpr std::size_t kMessageSize = 1024;

/// Said where a file cannot take what it should; the format of its device path.
inline constexpr char kCanNotWrite[] = "    Error: Can not write %s.\n";

/// Says `text`: on standard output, or into the pipe while the line has one. Behind an interrupt nothing is said any
/// more until the line ends.
void cli_print(const char* text);

/// Formats into the shared message buffer and says the result. Returns the number of characters said.
[[gnu::format(printf, 1, 2)]] int cli_printf(const char* format, ...);

/// While an object lives, what cli_print() says reaches the terminal in pieces of some kilobytes, for long texts that
/// nothing waits within. What else is written to standard output meanwhile may come before them.
class GatheredOutput
{
public:
    GatheredOutput();
    ~GatheredOutput();
    GatheredOutput(const GatheredOutput&) = delete;
    GatheredOutput& operator=(const GatheredOutput&) = delete;
};

#endif
