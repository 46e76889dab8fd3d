// The root commands.

#ifndef CLI_ROOT_TABLE_H
#define CLI_ROOT_TABLE_H

#include <span>

#include "shell/node.h"

/// The static rows. Once aliases are loaded, the tree has copies of them.
extern const std::span<cli_node> rootTable;

#endif
