// The root commands.

#ifndef CLI_ROOT_TABLE_H
#define CLI_ROOT_TABLE_H

#include <span>

#include "shell/node.h"

/// The rows of the root commands. If aliases are loaded, the tree uses a copy of these rows.
extern const std::span<cli_node> rootTable;

#endif
