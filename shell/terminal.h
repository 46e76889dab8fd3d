// The terminal of a session: its modes as they were found, and its size.

#ifndef SHELL_TERMINAL_H
#define SHELL_TERMINAL_H

/// Remembers the modes, the size, and whether reads and writes wait. For the start of a session, before readline.
void rememberTerminal();

/// Brings the modes back, the speed excepted, and waiting reads and writes. Nothing happens to a terminal that has none
/// of our business: one that was never remembered, or that another process group has by now. For signal handlers too.
void restoreTerminal();

/// Whether the window has another size than when this was last asked. Tools are then told the new one, where the login
/// told them one.
bool followWindow();

#endif
