// A file of the simulated device lies below the folder that the environment variable CLI_SIM_ROOT names.

#include "platform/device_file.h"

#include <cstdio>
#include <cstdlib>

DeviceFile::DeviceFile(const char* devicePath)
{
    const char* root = std::getenv("CLI_SIM_ROOT");
    const int length = std::snprintf(path_, kPathSize, "%s%s", root != nullptr ? root : "", devicePath);
    if (length < 0 || static_cast<std::size_t>(length) >= kPathSize)
        path_[0] = '\0';
}
