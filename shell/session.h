// The interactive session.

#ifndef SHELL_SESSION_H
#define SHELL_SESSION_H

/// What a session needs of the product that it serves.
struct SessionHost {
    /// Returns the prompt of the next line. The text is valid until the next call.
    const char* (*prompt)();
    /// Called when no line was entered within the idle time. Ends the process.
    void (*endIdle)();
};

/// Gets the terminal's line editor ready: keys, history and completion.
void prepareSession();

/// Reads and runs lines until the session ends. The end of the session is the end of the process.
[[noreturn]] void runSession(const SessionHost& host);

#endif
