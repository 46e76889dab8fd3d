// The interactive session.

#ifndef SHELL_SESSION_H
#define SHELL_SESSION_H

/// What a session needs of the product that it serves.
struct SessionHost {
    /// The next line's prompt, which stays until the next call.
    const char* (*prompt)();
    /// Ends the process when a line took too long.
    void (*endIdle)();
};

/// Gets the terminal's line editor ready: keys, history and completion.
void prepareSession();

/// Reads and runs lines until the session ends; every ending ends the process.
[[noreturn]] void runSession(const SessionHost& host);

#endif
