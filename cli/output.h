// What handlers say: the output routine, the shared message buffer, and the pipe that may collect both.

#ifndef CLI_OUTPUT_H
#define CLI_OUTPUT_H

#include <cstddef>

/// Longest message, its terminator included; a longer one is cut.
inline constexpr std::size_t kMessageSize = 1024;

/// Collected output of a piped line.
inline constexpr char kPipeFile[] = "/tmp/cli_pipe_file";

/// Says `text`: on standard output, or into the pipe while the line has one.
void cli_print(const char* text);

/// Formats into the shared message buffer and says the result. Returns the number of characters said.
[[gnu::format(printf, 1, 2)]] int cli_printf(const char* format, ...);

/// Prints each word followed by a blank, then a line feed.
int echoWords(int argc, char** argv);

/// From here on the output is collected, beginning with an empty pipe file. 0, or -1 when the file cannot be made anew.
int beginPipe();

/// Writes what is collected to the pipe file. 0, or -1 when the file cannot be opened; the buffer then keeps it.
int flushPipe();

/// Forgets what is collected; output goes to standard output again.
void endPipe();

/// Whether the current line's output is collected.
bool pipeIsActive();

/// Creates the pipe file anew, empty, for its owner alone, whatever stood there. 0, or -1.
int createPipeFile();

#endif
