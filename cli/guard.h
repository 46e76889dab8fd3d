// Ways out of a session: leaving, rebooting, the system shell, and the end of an idle session.

#ifndef CLI_GUARD_H
#define CLI_GUARD_H

#include "shell/node.h"

/// Children of `oem`.
extern cli_node oemTable[2];

/// `quit` and `exit`.
int quitCommand(int argc, char** argv);
int rebootCommand(int argc, char** argv);
int shellCommand(int argc, char** argv);
int factoryResetCommand(int argc, char** argv);

/// Whether this process has begun a factory reset; from then on the configuration files are not its business.
bool factoryResetStarted();

/// Ends an idle session as its parent asks for: says so on telnet, ends a console's system shell too. Does not return.
[[noreturn]] void endIdleSession();

#endif
