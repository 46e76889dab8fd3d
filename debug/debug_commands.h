// The commands `debug`, `kdebug` and `diagnose` over the debug library.

#ifndef DEBUG_DEBUG_COMMANDS_H
#define DEBUG_DEBUG_COMMANDS_H

#include "shell/node.h"

/// Children of `diagnose`.
extern cli_node diagnoseTable[1];

/// Attaches the user-space switches and builds the children of `debug` from the library's tables. 0, or -1.
int debugPrepare(cli_node* node, cli_node* siblings);

/// The same for `kdebug` and the kernel modules.
int kdebugPrepare(cli_node* node, cli_node* siblings);

#endif
