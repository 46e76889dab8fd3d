// Where a file of the device is found on the system that runs the shell.

#ifndef PLATFORM_DEVICE_FILE_H
#define PLATFORM_DEVICE_FILE_H

#include <cstddef>

/// The path under which a device file can be opened.
///
/// On the device that is the path itself; on a simulated device it lies below the device's root folder. Everything in
/// "/cfg", "/etc", "/dev" and "/tmp", and "/proc/mtd", is a file of the device. Meant to be used as a temporary:
///
///     FILE* file = std::fopen(DeviceFile("/cfg/cw.conf").path(), "r");
class DeviceFile
{
public:
    /// Longest path that can be opened, its terminator included.
    static constexpr std::size_t kPathSize = 1024;

    /// `devicePath` is absolute. A path that does not fit becomes the empty path, which no call can open.
    explicit DeviceFile(const char* devicePath);

    /// Valid as long as the object.
    [[nodiscard]] const char* path() const { return path_; }

private:
    char path_[kPathSize];
};

#endif
