#include "shell/pipe_file.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file.h"
#include "base/text.h"
#include "platform/device_file.h"
#include "shell/output.h"
#include "shell/pieces.h"
#include "shell/signals.h"

namespace
{

constexpr char kPipeFile[] = "/tmp/cli_pipe_file";
constexpr mode_t kMode = S_IRUSR | S_IWUSR;

struct Pipe {
    bool isActive;
    bool isIncomplete;                ///< the file could not be created, or a write failed
    bool isOwn;                       ///< the name of the file ends with the number of this process
    int fd = -1;                      ///< holds the lock; -1: there is no file yet
    char path[sizeof kPipeFile + 12]; ///< device path of the file
};

constinit Pipe linePipe{};
constinit Pieces pipePieces;

/// The path of the session's own file. This is not a device path, so that the handler of a signal that ends the process
/// can pass it to unlink().
constinit char ownFile[DeviceFile::kPathSize]{};

/// Whether `fd` is the file that `path` names.
bool isNamed(int fd, const char* path)
{
    struct stat opened;
    struct stat named;
    return fstat(fd, &opened) == 0 && lstat(path, &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

/// Whether `fd` is a regular file that belongs to this user and has no second hard link.
bool isOwnPlainFile(int fd)
{
    struct stat status;
    return fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 && status.st_uid == geteuid();
}

/// Opens the common file, empty and locked. Anything else that has its name is removed, never written to. -1 if that
/// cannot be done, or if another session holds the lock.
int openCommonFile(const char* path)
{
    constexpr int kTries = 10; // another session may remove the file between two steps
    for (int i = 0; i < kTries; ++i) {
        const int fd = open(path, O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kMode);
        if (fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0) {
            close(fd);
            return -1;
        }
        const bool named = fd >= 0 && isNamed(fd, path);
        if (named && isOwnPlainFile(fd) && fchmod(fd, kMode) == 0 && ftruncate(fd, 0) == 0)
            return fd;
        if (fd >= 0)
            close(fd);
        if ((named || fd < 0) && unlink(path) != 0)
            return -1;
    }
    return -1;
}

/// Creates the session's own file. It needs no lock, because no other process has this number.
int createOwnFile(const char* path)
{
    unlink(path);
    return open(path, O_WRONLY | O_APPEND | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode);
}

/// Opens the pipe file of the line if it is not open yet: the common file, or else the session's own file. Returns
/// false if both fail.
bool makeFile()
{
    if (linePipe.fd >= 0)
        return true;
    linePipe.isOwn = false;
    std::snprintf(linePipe.path, sizeof linePipe.path, "%s", kPipeFile);
    linePipe.fd = openCommonFile(DeviceFile(linePipe.path).path());
    if (linePipe.fd >= 0)
        return true;

    char path[sizeof linePipe.path];
    std::snprintf(path, sizeof path, "%s.%d", kPipeFile, static_cast<int>(getpid()));
    copyText(ownFile, DeviceFile(path).path());
    removeAtEnd(ownFile);
    linePipe.fd = createOwnFile(ownFile);
    if (linePipe.fd < 0) {
        removeAtEnd(nullptr);
        return false;
    }
    linePipe.isOwn = true;
    copyText(linePipe.path, path);
    return true;
}

void store(const char* bytes, std::size_t length)
{
    if (linePipe.isIncomplete || !makeFile() || !writeAll(linePipe.fd, bytes, length))
        linePipe.isIncomplete = true;
}

} // namespace

void beginPipe()
{
    linePipe.isActive = true;
    linePipe.isIncomplete = false;
    pipePieces.clear();
}

void endPipe()
{
    linePipe.isActive = false;
    if (linePipe.fd < 0)
        return;
    if (linePipe.isOwn) {
        unlink(ownFile);
        removeAtEnd(nullptr);
    }
    close(linePipe.fd);
    linePipe.fd = -1;
}

bool pipeIsActive()
{
    return linePipe.isActive;
}

void appendToPipe(const char* text)
{
    pipePieces.append(text, store);
}

bool flushPipe()
{
    pipePieces.finish(store);
    return !linePipe.isIncomplete;
}

// A full disk cuts a file at the end of a page. If the file ends there, writes a whole page. Otherwise the last page
// has room, so writes only the rest of this page.
bool testPipeRoom()
{
    static char page[4096]; // not constant: in .bss it takes no space in the program's file
    struct stat status;
    if (!flushPipe() || fstat(linePipe.fd, &status) != 0)
        return false;
    const std::size_t used = static_cast<std::size_t>(status.st_size) % sizeof page;
    const bool fits = writeAll(linePipe.fd, page, sizeof page - used);
    if (ftruncate(linePipe.fd, status.st_size) != 0 || !fits)
        linePipe.isIncomplete = true;
    return !linePipe.isIncomplete;
}

const char* pipeFilePath()
{
    return linePipe.path;
}

void printPipeError()
{
    cli_printf(kCanNotWrite, linePipe.path);
}

PipedOutput::PipedOutput() : terminal_(-1)
{
    std::fflush(stdout);
    if (!linePipe.isActive)
        return;
    const int file = flushPipe() ? fcntl(linePipe.fd, F_DUPFD_CLOEXEC, 0) : open("/dev/null", O_WRONLY | O_CLOEXEC);
    terminal_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (terminal_ >= 0)
        dup2(file, STDOUT_FILENO);
    close(file);
}

PipedOutput::~PipedOutput()
{
    if (terminal_ < 0)
        return;
    if (std::fflush(stdout) != 0)
        linePipe.isIncomplete = true;
    testPipeRoom();
    dup2(terminal_, STDOUT_FILENO);
    close(terminal_);
}
