// What handlers print: the output routine and the shared message buffer.

#ifndef SHELL_OUTPUT_H
#define SHELL_OUTPUT_H

#include <cstddef>

/// Longest message, its terminator included; a longer one is truncated.
inline constexpr std::size_t kMessageSize = 1024;

/// The error message for a file that cannot be written. The argument is the device path of the file.
inline constexpr char kCanNotWrite[] = "    Error: Can not write %s.\n";

using OutputSink = void (*)(const char* text);

/// Sends what is printed to `sink`, or to the standard output if `sink` is null.
void setOutputSink(OutputSink sink);

/// Prints the shell's own text as it stands. After an interrupt nothing is printed until the line ends.
void cli_print(const char* text);

/// Formats into the shared message buffer and prints the result. Control bytes of the format are printed, those of the
/// arguments are replaced by '?', so data cannot control the terminal. Returns the number of characters printed.
[[gnu::format(printf, 1, 2)]] int cli_printf(const char* format, ...);

/// Prints a text of several lines that a library has returned. Replaces its control bytes, except line feeds, by '?'.
void cli_printLines(const char* text);

/// While an object lives, printed text is collected and written to the terminal in pieces of some kilobytes. For long
/// texts. Other output to the standard output may come before the collected text.
class GatheredOutput
{
public:
    GatheredOutput();
    ~GatheredOutput();
    GatheredOutput(const GatheredOutput&) = delete;
    GatheredOutput& operator=(const GatheredOutput&) = delete;
};

#endif
