// On the device a file of the device is where its path says.

#include "platform/device_file.h"

#include <cstring>

DeviceFile::DeviceFile(const char* devicePath)
{
    const std::size_t length = std::strlen(devicePath);
    path_[0] = '\0';
    if (length < kPathSize)
        std::memcpy(path_, devicePath, length + 1);
}
