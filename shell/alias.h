// Aliases of the system shell's profile, offered as root commands.

#ifndef SHELL_ALIAS_H
#define SHELL_ALIAS_H

#include <span>

#include "shell/node.h"

/// Reads the aliases of "/etc/profile" into a larger copy of the root table, once. If that fails, the root commands
/// stay unchanged. Lines that are no alias definitions are skipped.
void loadAliases();

/// Whether the node stands for an aliased command.
bool isAlias(const cli_node& node);

/// Writes the command of the alias, followed by the words of the current line from its first pipe symbol on, truncated
/// to the size of the buffer.
void expandAlias(const cli_node& node, std::span<char> text);

#endif
