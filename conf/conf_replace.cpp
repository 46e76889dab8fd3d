#include "conf/conf_replace.h"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file.h"
#include "base/text.h"
#include "platform/device_file.h"
#include "shell/output.h"

namespace
{

constexpr std::size_t kPathSize = PATH_MAX;
constexpr char kConfFolder[] = "/cfg";
constexpr char kTemporarySuffix[] = ".new";
constexpr mode_t kModeBits = 07777;

/// If `path` is a symbolic link, replaces it by the target, and so on until it is no link. The target need not exist.
/// Returns false if there are too many links or the path gets too long.
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

/// The result of a replacement.
enum class Outcome : std::uint8_t {
    kWritten,
    kNotOpened, ///< the file cannot be opened for writing, or cannot be created
    kNotWritten,
};

/// The file that is replaced.
struct OldFile {
    int fd; ///< open for writing; -1 if there is none yet
    struct stat status;
};

/// Opens the old file for writing. Returns false if it is not a regular file or cannot be opened. A missing file is no
/// error.
bool openOld(const char* path, OldFile& old)
{
    old.fd = -1;
    if (stat(path, &old.status) != 0)
        return errno == ENOENT;
    if (S_ISREG(old.status.st_mode))
        old.fd = open(path, O_WRONLY | O_CLOEXEC);
    return old.fd >= 0;
}

/// Creates the temporary file. If a file with its name exists, a shell that was killed has left it, or another
/// user has created it. It may be a link to a file that must not change. So it is removed and never opened.
int createTemporary(const char* path)
{
    if (unlink(path) != 0 && errno != ENOENT)
        return -1;
    return open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
}

bool isFolderClosed(int error)
{
    return error == EACCES || error == EPERM || error == EROFS;
}

/// Gives a file the owner and the mode of the old one. Only the superuser can set a foreign owner (EPERM), and nobody
/// can set one that has no number in this user namespace (EINVAL). In these cases only the mode is set.
bool keepOwnerAndMode(int fd, const struct stat& old)
{
    return (fchown(fd, old.st_uid, old.st_gid) == 0 || errno == EPERM || errno == EINVAL) &&
           fchmod(fd, old.st_mode & kModeBits) == 0;
}

/// Makes the modification time of the new file later than that of the old one, so that readers notice the change. The
/// times alone may be equal, because their resolution may be 10 ms.
void makeNewer(int fd, const struct stat& old)
{
    struct stat status;
    if (fstat(fd, &status) != 0)
        return;
    const timespec& before = old.st_mtim;
    const timespec& now = status.st_mtim;
    if (now.tv_sec != before.tv_sec || now.tv_nsec > before.tv_nsec)
        return;
    constexpr long kLastNanosecond = 999'999'999;
    timespec next = {before.tv_sec, before.tv_nsec + 1};
    if (before.tv_nsec == kLastNanosecond)
        next = {before.tv_sec + 1, 0};
    const timespec times[2] = {{0, UTIME_OMIT}, next};
    futimens(fd, times);
}

/// Overwrites a file that cannot be replaced. Reserves the space first, so that a full disk is noticed before the old
/// text is lost.
bool writeInPlace(const OldFile& old, const ConfText& text)
{
    const auto length = static_cast<off_t>(text.length());
    const int claim = posix_fallocate(old.fd, 0, length);
    const bool isFull = claim == ENOSPC || claim == EDQUOT || claim == EFBIG;
    const bool written = !isFull && writeAll(old.fd, text.bytes(), text.length());
    if (ftruncate(old.fd, isFull ? old.status.st_size : length) != 0 || !written)
        return false;
    makeNewer(old.fd, old.status);
    return fsync(old.fd) == 0;
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

/// Gives the temporary file the new text, and the old file's owner and mode.
bool fillTemporary(int fd, const OldFile& old, const ConfText& text)
{
    if (old.fd >= 0 && !keepOwnerAndMode(fd, old.status))
        return false;
    if (!writeAll(fd, text.bytes(), text.length()))
        return false;
    if (old.fd >= 0)
        makeNewer(fd, old.status);
    return fsync(fd) == 0;
}

Outcome replaceFile(char* path, const OldFile& old, const ConfText& text)
{
    char temporary[kPathSize + sizeof kTemporarySuffix];
    std::snprintf(temporary, sizeof temporary, "%s%s", path, kTemporarySuffix);
    const int fd = createTemporary(temporary);
    if (fd < 0 && old.fd < 0)
        return Outcome::kNotOpened;
    if (fd < 0)
        return isFolderClosed(errno) && writeInPlace(old, text) ? Outcome::kWritten : Outcome::kNotWritten;

    const bool filled = fillTemporary(fd, old, text);
    close(fd);
    if (filled && std::rename(temporary, path) == 0) {
        syncFolder(path);
        return Outcome::kWritten;
    }
    const bool isFixed = filled && old.fd >= 0 && (errno == EBUSY || isFolderClosed(errno));
    unlink(temporary);
    return isFixed && writeInPlace(old, text) ? Outcome::kWritten : Outcome::kNotWritten;
}

Outcome replaceDeviceFile(const char* devicePath, const ConfText& text)
{
    char path[kPathSize];
    copyText(path, DeviceFile(devicePath).path());
    OldFile old;
    if (path[0] == '\0' || !followLinks(path) || !openOld(path, old))
        return Outcome::kNotOpened;
    const Outcome outcome = text.isComplete() ? replaceFile(path, old, text) : Outcome::kNotWritten;
    if (old.fd >= 0)
        close(old.fd);
    return outcome;
}

/// The state of the lock in this process: the number of ConfFolderLock objects, and the descriptor of the folder.
struct Turn {
    int holders;
    int fd;
    bool isOurs;
};

constinit Turn turn{};

/// Takes the lock. Returns false if another shell keeps it for longer than a second, and true if the file system does
/// not support locks.
bool lockFolder(int fd)
{
    constexpr timespec kPause = {0, 1'000'000}; // on a kernel with a timer of 100 Hz, this takes 10 or 20 ms
    timespec start;
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &start);
    do {
        if (flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
            return true;
        nanosleep(&kPause, nullptr);
        clock_gettime(CLOCK_MONOTONIC, &now);
    } while (now.tv_sec - start.tv_sec < (now.tv_nsec < start.tv_nsec ? 2 : 1));
    return false;
}

} // namespace

ConfFolderLock::ConfFolderLock()
{
    if (turn.holders++ > 0)
        return;
    turn.fd = open(DeviceFile(kConfFolder).path(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    turn.isOurs = turn.fd < 0 || lockFolder(turn.fd);
}

ConfFolderLock::~ConfFolderLock()
{
    if (--turn.holders == 0 && turn.fd >= 0)
        close(turn.fd);
}

bool ConfFolderLock::isOurs()
{
    return turn.isOurs;
}

int replaceConfFile(const char* devicePath, const ConfText& text)
{
    const ConfFolderLock lock;
    const Outcome outcome = ConfFolderLock::isOurs() ? replaceDeviceFile(devicePath, text) : Outcome::kNotWritten;
    if (outcome == Outcome::kNotWritten)
        cli_printf(kCanNotWrite, devicePath);
    return outcome == Outcome::kWritten ? 0 : -1;
}

void syncConfFile(const char* devicePath)
{
    char path[kPathSize];
    const int fd = openPlainFile(devicePath);
    if (fd < 0)
        return;
    fsync(fd);
    close(fd);
    copyText(path, DeviceFile(devicePath).path());
    if (followLinks(path))
        syncFolder(path);
}
