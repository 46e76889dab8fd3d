// The commands `debug`, `kdebug` and `diagnose` over the debug library.

#ifndef DEBUG_DEBUG_COMMANDS_H
#define DEBUG_DEBUG_COMMANDS_H

#include "shell/node.h"

/// Children of `diagnose`.
extern cli_node diagnoseTable[1];

// What the two facilities take: nothing lists the modules; a module lists its submodules; a module with `clear` or
// `all`, and a submodule with `on` or `off`, turn switches, once the library is attached. A name that is none is said
// and draws the list. Their handlers return 0, but for `debug show` and `debug log-clear`, which return what the
// library does.

/// Attaches the user-space switches and builds the children of `debug` from the library's tables. 0, or -1 without
/// memory.
int debugPrepare(cli_node* node, cli_node* siblings);

/// The same for `kdebug` and the kernel modules.
int kdebugPrepare(cli_node* node, cli_node* siblings);

#endif
