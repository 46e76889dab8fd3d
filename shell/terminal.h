// The terminal of a session: its modes as they were found, and its size.

#ifndef SHELL_TERMINAL_H
#define SHELL_TERMINAL_H

/// Remembers the modes, the size, and whether reads and writes wait. For the start of a session, before readline.
void rememberTerminal();

/// Brings the modes back, the speed excepted, and waiting reads and writes. Nothing happens to a terminal that has none
/// of our business: one that was never remembered, or that another process group has by now. For signal handlers too.
void restoreTerminal();

/// Looks at the size of the window. If it is another than at the last look, gives it to tools, for which it replaces
/// the size that the login gave them, if it gave one. Returns whether it is another.
bool updateWindow();

#endif
