#include "base/file.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"

ssize_t readAll(int fd, void* bytes, std::size_t size)
{
    return transferAll(
        size, [&](std::size_t done, std::size_t rest) { return read(fd, static_cast<char*>(bytes) + done, rest); });
}

bool writeAll(int fd, const void* bytes, std::size_t size)
{
    const ssize_t written = transferAll(size, [&](std::size_t done, std::size_t rest) {
        return write(fd, static_cast<const char*>(bytes) + done, rest);
    });
    return written == static_cast<ssize_t>(size);
}

// With O_NONBLOCK, opening a FIFO does not wait for a writer.
int openPlainFile(const char* devicePath, std::size_t* size)
{
    const int fd = open(DeviceFile(devicePath).path(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status;
    if (fd >= 0 && (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))) {
        close(fd);
        return -1;
    }
    if (fd >= 0 && size != nullptr)
        *size = static_cast<std::size_t>(std::min<std::uint64_t>(static_cast<std::uint64_t>(status.st_size), SIZE_MAX));
    return fd;
}

bool makePrivateFile(const char* devicePath)
{
    const DeviceFile file(devicePath);
    unlink(file.path());
    const int fd = open(file.path(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd < 0)
        return false;
    close(fd);
    return true;
}
