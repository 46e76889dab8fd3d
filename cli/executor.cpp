#include "cli/executor.h"

int executeLine(const char*)
{
    return 0;
}
int helpLister(int, char**)
{
    return 0;
}
