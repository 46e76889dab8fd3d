// The `bios` command over the platform information record.

#ifndef BIOS_BIOS_COMMAND_H
#define BIOS_BIOS_COMMAND_H

#include <array>

#include "shell/node.h"

/// Children of `bios` and of `memdbg`.
extern std::array<cli_node, 11> biosTable;

/// The handler of every row: the second word names what is done, to one or two more words where it takes them; anything
/// else, and another number of words, draws the usage. Always 0.
int biosCommand(int argc, char** argv);

#endif
