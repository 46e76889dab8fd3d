// A file of the simulated device is below the folder that the environment variable CLI_SIM_ROOT names. Without the
// variable all paths are empty, so no file of the PC is taken for one of the device.

#include "platform/device_file.h"

#include <cstdio>
#include <cstdlib>

DeviceFile::DeviceFile(const char* devicePath)
{
    path_[0] = '\0';
    const char* root = std::getenv("CLI_SIM_ROOT");
    if (root == nullptr || *root == '\0')
        return;
    const int length = std::snprintf(path_, kPathSize, "%s%s", root, devicePath);
    if (length < 0 || static_cast<std::size_t>(length) >= kPathSize)
        path_[0] = '\0';
}
