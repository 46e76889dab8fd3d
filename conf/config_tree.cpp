#include "conf/config_tree.h"

constinit cli_node configTable[2] = {
    command("system", "System configuration.", nullptr),
    command("capwap", "CAPWAP configuration.", nullptr),
};

int configPrepare(cli_node*, cli_node*)
{
    return 0;
}

int showCwConfCommand(int, char**)
{
    return 0;
}

int showSysConfCommand(int, char**)
{
    return 0;
}

int saveCwConfCommand(int, char**)
{
    return 0;
}

int dropCwConfCommand(int, char**)
{
    return 0;
}
