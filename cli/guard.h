// Commands that end or leave a session, and the end of an idle session.

#ifndef CLI_GUARD_H
#define CLI_GUARD_H

#include "shell/node.h"

/// Children of `oem`: `start` runs the script of the factory mode, `reboot` runs the tool `reboot`. With more words
/// they do nothing. Always returns 0.
extern cli_node oemTable[2];

/// `quit` and `exit`: prints "Exit." and ends the process with status 0. Ignores its words.
[[noreturn]] int quitCommand(int argc, char** argv);

/// `reboot`: runs the tool `reboot` and ends the process with status 0. Ignores its words.
[[noreturn]] int rebootCommand(int argc, char** argv);

/// `shell`: if the parent process is a system shell, ends the process with status 0. Otherwise runs a system shell and
/// returns 0.
int shellCommand(int argc, char** argv);

/// `factory-reset [-n]`: asks for confirmation, unless "-n" is the only word after it. Returns the result of
/// sys_factory_reset(), or 0 if the user has refused.
int factoryResetCommand(int argc, char** argv);

/// Whether this process has begun a factory reset. From then on it does not read the configuration files.
bool factoryResetStarted();

/// Ends an idle session. If the parent process is telnetd, first prints "Timeout" and "exit". If the parent process is
/// a system shell, kills that shell, too.
[[noreturn]] void endIdleSession();

#endif
