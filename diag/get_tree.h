// The `get` subtree: status displays.

#ifndef DIAG_GET_TREE_H
#define DIAG_GET_TREE_H

#include "shell/node.h"

/// Children of `get`: `vap`, `wtp`, `radio`, `system` and `qsky`. What asks the daemon (`vap cfg-info`, `wtp info`,
/// `wtp stations`, `radio info`) returns what queryDaemon() does, whatever the words.
extern cli_node getTable[5];

#endif
