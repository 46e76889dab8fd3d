#include "cli/pass_through.h"

int capturePassThrough(int, char**)
{
    return 0;
}

int directPassThrough(int, char**)
{
    return 0;
}
