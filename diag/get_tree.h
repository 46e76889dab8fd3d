// The `get` subtree: status displays.

#ifndef DIAG_GET_TREE_H
#define DIAG_GET_TREE_H

#include "shell/node.h"

/// Children of `get`: `vap`, `wtp`, `radio`, `system` and `qsky`. The handlers of `vap cfg-info`, `wtp info`,
/// `wtp stations` and `radio info` ignore their words and return the result of queryDaemon().
extern cli_node getTable[5];

#endif
