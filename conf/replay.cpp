#include "conf/replay.h"

int confReplay()
{
    return 0;
}
