// The commands `debug`, `kdebug` and `diagnose` over the debug library.

#ifndef DEBUG_DEBUG_COMMANDS_H
#define DEBUG_DEBUG_COMMANDS_H

#include "shell/node.h"

/// Children of `diagnose`.
extern cli_node diagnoseTable[1];

// `debug` and `kdebug` without words print the modules; with a module they print its submodules. `clear` or `all` after
// a module turns all its switches off or on. `on` or `off` after a submodule turns its switch on or off. If the library
// is not attached, no switch changes. For an unknown name they print a message and the list. The handlers return 0;
// `debug show` and `debug log-clear` return the result of the library.

/// The prepare hook of `debug`. Attaches the user-space switches and builds the children of `debug` from the library's
/// tables. Returns 0, or -1 if there is no memory. Does not use `siblings`.
int debugPrepare(cli_node* node, cli_node* siblings);

/// The same for `kdebug` and the kernel modules.
int kdebugPrepare(cli_node* node, cli_node* siblings);

#endif
