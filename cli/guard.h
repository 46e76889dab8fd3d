// Ways out of a session: leaving, rebooting, the system shell, and the end of an idle session.

#ifndef CLI_GUARD_H
#define CLI_GUARD_H

#include "shell/node.h"

/// Children of `oem`: `start` runs the factory mode's script, `reboot` the tool; more words do nothing. Always 0.
extern cli_node oemTable[2];

/// `quit` and `exit`: says so and ends the process with 0, whatever the words.
[[noreturn]] int quitCommand(int argc, char** argv);

/// `reboot`: runs the tool and ends the process with 0, whatever the words.
[[noreturn]] int rebootCommand(int argc, char** argv);

/// `shell`: ends the process with 0 where a system shell waits for it, otherwise runs one and returns 0.
int shellCommand(int argc, char** argv);

/// `factory-reset [-n]`: asks first, unless "-n" is the only word behind it. The platform's result, 0 when refused.
int factoryResetCommand(int argc, char** argv);

/// Whether this process has begun a factory reset; from then on the configuration files are not its business.
bool factoryResetStarted();

/// Ends an idle session as its parent asks for: says so on telnet, ends a console's system shell too. Does not return.
[[noreturn]] void endIdleSession();

#endif
