// Reading a line with readline: waiting for keys and signals, and the end of the line.

#ifndef SHELL_LINE_READER_H
#define SHELL_LINE_READER_H

/// What the reader needs of its session.
struct LineSource {
    /// Returns the prompt of the next line. The text is valid until the next call.
    const char* (*prompt)();
    /// Seconds within which a line must be entered; 0 means no limit.
    unsigned idleTimeout;
    /// Called after that time, with the terminal restored. Ends the session.
    void (*endIdle)();
};

/// Prepares readline and the signals of a session, once.
void prepareLineReader();

/// Reads a line, which the caller frees. An interrupt drops the line and begins a new one. Returns null if the input
/// has ended or cannot be read. A line that a hang-up or a read error cuts off is not returned.
char* readLine(const LineSource& source);

#endif
