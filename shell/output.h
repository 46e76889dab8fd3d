// What handlers print: the output routine and the shared message buffer.

#ifndef SHELL_OUTPUT_H
#define SHELL_OUTPUT_H

#include <cstddef>

/// Longest message, its terminator included; a longer one is cut.
inline constexpr std::size_t kMessageSize = 1024;

/// Printed when a file cannot take what it should; the format of its device path.
inline constexpr char kCanNotWrite[] = "    Error: Can not write %s.\n";

using OutputSink = void (*)(const char* text);

/// Leads what is printed to `sink`, or back to the standard output if it is null.
void setOutputSink(OutputSink sink);

/// Prints the shell's own text as it stands. After an interrupt nothing is printed until the line ends.
void cli_print(const char* text);

/// Formats into the shared message buffer and prints the result. Control bytes stand in the format alone: those that
/// the arguments bring along are shown as '?', so that data cannot drive the terminal. Returns the number of characters
/// printed.
[[gnu::format(printf, 1, 2)]] int cli_printf(const char* format, ...);

/// Prints a text that a library returns whole: its line feeds stand, its other control bytes are shown as '?'.
void cli_printLines(const char* text);

/// While an object lives, what is printed reaches the terminal by the kilobyte. It is for long texts that are printed
/// without a pause. What else is written to standard output meanwhile may come before them.
class GatheredOutput
{
public:
    GatheredOutput();
    ~GatheredOutput();
    GatheredOutput(const GatheredOutput&) = delete;
    GatheredOutput& operator=(const GatheredOutput&) = delete;
};

#endif
