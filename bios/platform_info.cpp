#include "bios/platform_info.h"

int biosGetOemSn(char (&)[17])
{
    return -1;
}

int biosGetRegCode(char&)
{
    return -1;
}
