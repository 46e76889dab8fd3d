#include "base/file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"

ssize_t readAll(int fd, void* bytes, std::size_t size)
{
    auto* const first = static_cast<char*>(bytes);
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = read(fd, first + done, size - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

bool writeAll(int fd, const void* bytes, std::size_t size)
{
    const auto* next = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t count = write(fd, next, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

// Opening must not wait for the other end of a pipe, hence O_NONBLOCK.
int openPlainFile(const char* devicePath)
{
    const int fd = open(DeviceFile(devicePath).path(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status;
    if (fd >= 0 && (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))) {
        close(fd);
        return -1;
    }
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
