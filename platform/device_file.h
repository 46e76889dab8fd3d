// The paths of the device's files on the system that runs the shell.

#ifndef PLATFORM_DEVICE_FILE_H
#define PLATFORM_DEVICE_FILE_H

#include <cstddef>

/// The path with which a device file can be opened. On the device this is the device path itself. On a simulated device
/// it is a path below the root folder of the simulation. Device files are "/proc/mtd" and all files in "/cfg", "/etc",
/// "/dev" and "/tmp". Use it as a temporary object:
///
///     FILE* file = std::fopen(DeviceFile("/cfg/cw.conf").path(), "r");
class DeviceFile
{
public:
    /// Longest path that can be opened, its terminator included.
    static constexpr std::size_t kPathSize = 1024;

    /// `devicePath` is absolute. A path that does not fit becomes the empty path, which no call can open.
    explicit DeviceFile(const char* devicePath);

    /// The text is valid while the object exists.
    [[nodiscard]] const char* path() const { return path_; }

private:
    char path_[kPathSize];
};

#endif
