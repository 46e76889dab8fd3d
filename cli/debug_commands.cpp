#include "cli/debug_commands.h"

constinit cli_node diagnoseTable[1] = {command("crash", "crash info", nullptr)};

int debugPrepare(cli_node*, cli_node*)
{
    return 0;
}

int kdebugPrepare(cli_node*, cli_node*)
{
    return 0;
}
