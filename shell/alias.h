// Aliases of the system shell's profile, offered as root commands.

#ifndef SHELL_ALIAS_H
#define SHELL_ALIAS_H

#include <span>

#include "shell/node.h"

/// Reads the aliases of "/etc/profile" into a larger copy of the root table, once. Any failure leaves the root
/// commands as they are; a line that is not exactly an alias definition is skipped.
void loadAliases();

/// Whether the node stands for an aliased command.
bool isAlias(const cli_node& node);

/// Writes what the alias stands for, followed by the current line's words from its first pipe symbol on; cut to size.
void expandAlias(const cli_node& node, std::span<char> text);

#endif
