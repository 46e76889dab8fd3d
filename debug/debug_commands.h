// The commands `debug`, `kdebug` and `diagnose` over the debug library.

#ifndef DEBUG_DEBUG_COMMANDS_H
#define DEBUG_DEBUG_COMMANDS_H

#include "shell/node.h"

/// Children of `diagnose`.
extern cli_node diagnoseTable[1];

// `debug` and `kdebug` without words print the modules; with a module they print its submodules. A module with `clear`
// or `all`, and a submodule with `on` or `off`, turn switches off or on, if the library is attached. An unknown name
// prints a message and the list. The handlers return 0; `debug show` and `debug log-clear` return the result of the
// library.

/// Attaches the user-space switches and builds the children of `debug` from the library's tables. Returns 0, or -1 if
/// there is no memory.
int debugPrepare(cli_node* node, cli_node* siblings);

/// The same for `kdebug` and the kernel modules.
int kdebugPrepare(cli_node* node, cli_node* siblings);

#endif
