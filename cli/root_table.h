// The root commands.

#ifndef CLI_ROOT_TABLE_H
#define CLI_ROOT_TABLE_H

#include "shell/node.h"

inline constexpr int kRootCommandCount = 46;

/// The static rows; cliRoot refers to them until aliases are loaded.
extern cli_node rootTable[kRootCommandCount];

#endif
