// The interactive session.

#ifndef CLI_SESSION_H
#define CLI_SESSION_H

/// Reads and runs lines until the session ends; every ending ends the process.
[[noreturn]] void runSession();

#endif
