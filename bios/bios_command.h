// The command `bios`, which shows and changes the factory record.

#ifndef BIOS_BIOS_COMMAND_H
#define BIOS_BIOS_COMMAND_H

#include <array>

#include "shell/node.h"

/// Children of `bios` and of `memdbg`.
extern std::array<cli_node, 11> biosTable;

/// The handler of every row. The second word names the operation; some operations take one or two more words. An
/// unknown operation and a wrong number of words print the usage. Always returns 0.
int biosCommand(int argc, char** argv);

#endif
