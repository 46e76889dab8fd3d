#include "platform/simulation/debug_log.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"

namespace
{

/// A log of this size is truncated.
constexpr off_t kLogSize = 65536;

} // namespace

SimTime::SimTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    std::strftime(text, sizeof text, "%F %T UTC", gmtime_r(&now, &utc));
}

void simAddToLog(const char* devicePath, const char* line)
{
    struct stat status = {};
    const bool full = stat(DeviceFile(devicePath).path(), &status) == 0 && status.st_size >= kLogSize;
    const int fd = simOpenDebugFile(devicePath, O_WRONLY | O_APPEND | (full ? O_TRUNC : 0));
    if (fd < 0)
        return;
    dprintf(fd, "%s\n", line);
    close(fd);
}

int simOpenDebugFile(const char* devicePath, int flags)
{
    const DeviceFile file(devicePath);
    flags |= O_CREAT | O_CLOEXEC | O_NOFOLLOW;
    const int fd = open(file.path(), flags, S_IRUSR | S_IWUSR);
    if (fd >= 0 || errno != ENOENT)
        return fd;
    mkdir(DeviceFile("/sim").path(), S_IRWXU);
    return open(file.path(), flags, S_IRUSR | S_IWUSR);
}
