// The `get` subtree: status displays.

#ifndef DIAG_GET_TREE_H
#define DIAG_GET_TREE_H

#include "shell/node.h"

/// Children of `get`: `vap`, `wtp`, `radio`, `system` and `qsky`.
extern cli_node getTable[5];

#endif
