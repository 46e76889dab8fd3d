// The terminal of a session: its modes as they were found, and its size.

#ifndef SHELL_TERMINAL_H
#define SHELL_TERMINAL_H

/// Remembers the modes and the size of the terminal, and whether the standard descriptors block. To be called at the
/// start of a session, before readline.
void rememberTerminal();

/// Makes those standard descriptors block again that blocked at the start. Then restores the modes of the terminal,
/// except the speed. Does not touch the modes if no terminal was remembered, or if another process group is in the
/// foreground of the terminal. Safe in a signal handler.
void restoreTerminal();

/// Reads the size of the window. If it has changed since the last call, updates COLUMNS and LINES for tools. Does not
/// set a variable that the login has not set. Returns whether the size has changed.
bool updateWindow();

#endif
