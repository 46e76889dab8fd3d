// Replacing a configuration file: the new text is written beside the old one and renamed over it.

#include "conf/conf_file.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "conf/text.h"
#include "platform/device_file.h"

namespace
{

constexpr std::size_t kPathSize = PATH_MAX;
constexpr char kTemporarySuffix[] = ".new";
constexpr mode_t kModeBits = 07777;

/// Replaces `path` by the file that a symbolic link at it names, which need not exist. False: it leads nowhere.
bool followLinks(char (&path)[kPathSize])
{
    constexpr int kMostLinks = 16;
    for (int i = 0; i < kMostLinks; ++i) {
        char target[kPathSize];
        const ssize_t length = readlink(path, target, sizeof target - 1);
        if (length < 0)
            return true;
        target[length] = '\0';
        const char* slash = std::strrchr(path, '/');
        const std::size_t folder =
            target[0] == '/' || slash == nullptr ? 0 : static_cast<std::size_t>(slash - path) + 1;
        if (folder + static_cast<std::size_t>(length) >= sizeof path)
            return false;
        std::memcpy(path + folder, target, static_cast<std::size_t>(length) + 1);
    }
    return false;
}

bool isSameFile(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Opens the one temporary file of a configuration file, locked against other savers. Its name is fixed, so what a
/// killed saver left is used again. -1: it cannot be created, or another saver keeps it for longer than a second.
int openTemporary(const char* path)
{
    constexpr int kTries = 100;
    constexpr timespec kPause = {0, 10'000'000};
    for (int i = 0; i < kTries; ++i) {
        const int fd = open(path, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
        if (fd < 0)
            return -1;
        if (flock(fd, LOCK_EX | LOCK_NB) != 0)
            nanosleep(&kPause, nullptr);
        else if (struct stat mine, named; fstat(fd, &mine) == 0 && stat(path, &named) == 0 && isSameFile(mine, named))
            return fd;
        close(fd); // busy, or renamed away by its saver between our two calls
    }
    return -1;
}

bool writeText(int fd, const ConfText& text)
{
    const char* bytes = text.bytes();
    std::size_t left = text.length();
    while (left > 0) {
        const ssize_t written = write(fd, bytes, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        left -= static_cast<std::size_t>(written);
    }
    return true;
}

/// Only the superuser can keep a foreign owner; for others the mode alone counts.
bool keepOwnerAndMode(int fd, const struct stat& old)
{
    return (fchown(fd, old.st_uid, old.st_gid) == 0 || errno == EPERM) && fchmod(fd, old.st_mode & kModeBits) == 0;
}

/// For a file that is a mount point of its own. The room is claimed first, so a full disk is noticed before anything is
/// lost.
bool writeInPlace(const char* path, const ConfText& text)
{
    struct stat old;
    if (stat(path, &old) != 0)
        return false;
    const int fd = open(path, O_WRONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const auto length = static_cast<off_t>(text.length());
    const bool hasRoom = posix_fallocate(fd, 0, length) != ENOSPC;
    const bool written = hasRoom && writeText(fd, text);
    const bool sized = ftruncate(fd, hasRoom ? length : old.st_size) == 0;
    const bool kept = written && sized && fsync(fd) == 0;
    close(fd);
    return kept;
}

void syncFolder(char* path)
{
    char* slash = std::strrchr(path, '/');
    slash[slash == path ? 1 : 0] = '\0';
    const int fd = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    fsync(fd);
    close(fd);
}

/// Gives the temporary file the new text and the old file's owner and mode. `old` is null for a new file.
bool fillTemporary(int fd, const struct stat* old, const ConfText& text)
{
    if (ftruncate(fd, 0) != 0 || (old != nullptr && !keepOwnerAndMode(fd, *old)))
        return false;
    return writeText(fd, text) && fsync(fd) == 0;
}

} // namespace

int replaceConfFile(const char* devicePath, const ConfText& text)
{
    char path[kPathSize];
    copyText(path, DeviceFile(devicePath).path());
    if (path[0] == '\0' || !text.isComplete() || !followLinks(path))
        return -1;
    struct stat old;
    const bool exists = stat(path, &old) == 0;
    if (exists && !S_ISREG(old.st_mode))
        return -1;

    char temporary[kPathSize + sizeof kTemporarySuffix];
    std::snprintf(temporary, sizeof temporary, "%s%s", path, kTemporarySuffix);
    const int fd = openTemporary(temporary);
    if (fd < 0)
        return -1;
    const bool filled = fillTemporary(fd, exists ? &old : nullptr, text);
    const bool renamed = filled && std::rename(temporary, path) == 0;
    const bool isMountPoint = filled && !renamed && errno == EBUSY;
    if (!renamed)
        unlink(temporary);
    else
        syncFolder(path);
    close(fd); // the lock ends here, behind the last use of the temporary's name
    return renamed || (isMountPoint && writeInPlace(path, text)) ? 0 : -1;
}
