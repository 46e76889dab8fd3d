#include "conf/cfg.h"

int cfgCommand(int, char**)
{
    return 0;
}
