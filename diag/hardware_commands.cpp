#include "diag/hardware_commands.h"

int rstktCommand(int, char**)
{
    return 0;
}

int gpioCommand(int, char**)
{
    return 0;
}

int getscanCommand(int, char**)
{
    return 0;
}

int sptestCommand(int, char**)
{
    return 0;
}

int ledTestCommand(int, char**)
{
    return 0;
}
