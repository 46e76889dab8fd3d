// On the device, the path of a device file is used as it is.

#include "platform/device_file.h"

#include <cstring>

DeviceFile::DeviceFile(const char* devicePath)
{
    const std::size_t length = std::strlen(devicePath);
    path_[0] = '\0';
    if (length < kPathSize)
        std::memcpy(path_, devicePath, length + 1);
}
