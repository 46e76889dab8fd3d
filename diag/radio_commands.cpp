#include "diag/radio_commands.h"

int txpowerCommand(int, char**)
{
    return 0;
}

int calibrationCommand(int, char**)
{
    return 0;
}

int countryCommand(int, char**)
{
    return 0;
}
