#include "cli/guard.h"

constinit cli_node oemTable[2] = {};

int quitCommand(int, char**)
{
    return 0;
}
int rebootCommand(int, char**)
{
    return 0;
}
int shellCommand(int, char**)
{
    return 0;
}
int factoryResetCommand(int, char**)
{
    return 0;
}
