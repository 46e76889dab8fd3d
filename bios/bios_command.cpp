#include "bios/bios_command.h"

constinit cli_node biosTable[11] = {};
