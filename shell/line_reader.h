// Reading a line with readline: waiting for keys and signals, and the end of the line.

#ifndef SHELL_LINE_READER_H
#define SHELL_LINE_READER_H

/// What the reader needs of its session.
struct LineSource {
    /// Writes the prompt of the next line into the buffer that is returned, which stays until the next call.
    const char* (*prompt)();
    /// Seconds that a line may take, 0: any time.
    unsigned idleTimeout;
    /// Ends a session that was idle for that long; the terminal is as it was found.
    void (*endIdle)();
};

/// Prepares readline and the signals of a session, once.
void prepareLineReader();

/// Reads a line, which the caller frees. An interrupt drops the line and begins a fresh one. Null: the input has ended
/// or cannot be read; what a hang-up or a read error cut off is lost.
char* readLine(const LineSource& source);

#endif
