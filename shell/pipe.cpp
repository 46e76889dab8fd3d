// A session uses the one pipe file while no other living session holds it, which an advisory lock tells, and otherwise
// one of its own that ends with the line. The file is made when there is something to put into it.

#include "shell/pipe.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
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
#include "shell/tokenizer.h"
#include "shell/tools.h"

namespace
{

constexpr char kPipeFile[] = "/tmp/cli_pipe_file";

/// A system shell takes no descriptor of two digits.
constexpr int kHighestDescriptor = 9;

struct Pipe {
    bool active;
    bool failed;                      ///< something that belongs into the file is not there
    const char* ownFile;              ///< path of a file that carries this process's number, null: it is the common one
    int fd;                           ///< holds the lock; -1: there is no file yet
    char path[sizeof kPipeFile + 12]; ///< of the device
};

constinit Pipe linePipe{.active = false, .failed = false, .ownFile = nullptr, .fd = -1, .path = {}};
constinit Pieces pieces;

/// Tokens of the current line as command text. Text that does not fit a command line is one character too long for it
/// here, so the command is refused where it is composed.
class TokenText
{
public:
    TokenText(int first, int last) { appendTokens(text_, first, last); }
    [[nodiscard]] const char* text() const { return text_; }

private:
    char text_[kCommandLength + 2];
};

/// Whether `fd`, which holds the lock, is still what the name stands for.
bool isNamed(int fd, const char* path)
{
    struct stat mine;
    struct stat named;
    return fstat(fd, &mine) == 0 && lstat(path, &named) == 0 && mine.st_dev == named.st_dev &&
           mine.st_ino == named.st_ino;
}

/// Whether `fd` is a file that only its owner, this process, can reach, and by one name.
bool isPrivate(int fd)
{
    struct stat status;
    return fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 && status.st_uid == geteuid() &&
           fchmod(fd, S_IRUSR | S_IWUSR) == 0;
}

/// Opens the file empty and locked. Anything else that stands at its name is removed, never written to. -1, with errno
/// EWOULDBLOCK when another session holds it.
int openLocked(const char* path)
{
    constexpr int kTries = 10;
    for (int i = 0; i < kTries; ++i) {
        const int fd = open(path, O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0) {
            close(fd);
            errno = EWOULDBLOCK;
            return -1;
        }
        const bool named = fd >= 0 && isNamed(fd, path);
        if (named && isPrivate(fd) && ftruncate(fd, 0) == 0)
            return fd;
        const int reason = errno;
        const bool changed = fd >= 0 && !named;
        if (fd >= 0)
            close(fd);
        if (!changed && unlink(path) != 0) {
            errno = reason;
            return -1;
        }
    }
    return -1;
}

/// Makes the line's file unless it is there. False: it cannot be made; the path is then the one to name.
bool makeFile()
{
    static constinit char ownFile[DeviceFile::kPathSize]{};
    if (linePipe.fd >= 0)
        return true;
    std::snprintf(linePipe.path, sizeof linePipe.path, "%s", kPipeFile);
    linePipe.fd = openLocked(DeviceFile(linePipe.path).path());
    if (linePipe.fd >= 0 || errno != EWOULDBLOCK)
        return linePipe.fd >= 0;
    std::snprintf(linePipe.path, sizeof linePipe.path, "%s.%d", kPipeFile, static_cast<int>(getpid()));
    copyText(ownFile, DeviceFile(linePipe.path).path());
    removeAtEnd(ownFile);
    linePipe.fd = openLocked(ownFile);
    if (linePipe.fd < 0) {
        removeAtEnd(nullptr);
        return false;
    }
    linePipe.ownFile = ownFile;
    return true;
}

void closeFile()
{
    if (linePipe.fd < 0)
        return;
    if (linePipe.ownFile != nullptr)
        unlink(linePipe.ownFile);
    removeAtEnd(nullptr);
    close(linePipe.fd);
    linePipe.fd = -1;
    linePipe.ownFile = nullptr;
}

/// A descriptor of the file for tools: whatever outlives its line with it does not keep the lock. -1: none.
int openForTools()
{
    const DeviceFile file(linePipe.path);
    const int fd = open(file.path(), O_WRONLY | O_APPEND | O_NOFOLLOW | O_CLOEXEC);
    if (fd >= 0 && isNamed(linePipe.fd, file.path()) && isNamed(fd, file.path()))
        return fd;
    if (fd >= 0)
        close(fd);
    return -1;
}

/// Whether the file can grow, which tools do not check: tried with what is left of its last page, or a page.
bool hasRoom()
{
    static char page[4096]; // not constant: zeros in the program's file are worth nothing
    struct stat status;
    if (fstat(linePipe.fd, &status) != 0)
        return false;
    const std::size_t used = static_cast<std::size_t>(status.st_size) % sizeof page;
    const bool written = writeAll(linePipe.fd, page, sizeof page - used);
    return ftruncate(linePipe.fd, status.st_size) == 0 && written;
}

void store(const char* bytes, std::size_t length)
{
    if (linePipe.failed || !makeFile() || !writeAll(linePipe.fd, bytes, length))
        linePipe.failed = true;
}

void sayUnwritten()
{
    cli_printf(kCanNotWrite, linePipe.path);
}

/// Runs the tool with its output in the file, and shows the file through the rest of the line. False: it was not run.
bool runCaptured()
{
    if (!makeFile() || !hasRoom())
        return false;
    const int opened = openForTools();
    const int output = opened >= 0 ? fcntl(opened, F_DUPFD, STDERR_FILENO + 1) : -1;
    if (opened >= 0)
        close(opened);
    const bool usable = output >= 0 && output <= kHighestDescriptor;
    if (usable)
        runCommandf("%s >&%d %d>&-; exec %d>&-; cat %s%s", TokenText(0, wordCount()).text(), output, output, output,
                    DeviceFile(linePipe.path).path(), TokenText(wordCount(), tokenStore.argc).text());
    if (output >= 0)
        close(output);
    if (usable && !hasRoom())
        sayUnwritten();
    return usable;
}

} // namespace

int runPiped(CliHandler handler)
{
    linePipe.active = true;
    linePipe.failed = false;
    pieces.clear();
    const int result = handler(tokenStore.pipeIndex, tokenStore.tokens);
    pieces.finish(store);
    linePipe.active = false;
    if (linePipe.failed)
        sayUnwritten();
    else if (!isInterrupted())
        runCommandf("cat %s%s", DeviceFile(linePipe.path).path(),
                    TokenText(tokenStore.pipeIndex, tokenStore.argc).text());
    closeFile();
    return result;
}

int capturePassThrough(int argc, char** argv)
{
    if (!runCaptured())
        directPassThrough(argc, argv);
    closeFile();
    return 0;
}

int directPassThrough(int, char**)
{
    runCommandf("%s", TokenText(0, tokenStore.argc).text());
    return 0;
}

void runShellCommand(const char* command)
{
    const PipedOutput piped;
    if (!linePipe.active || !linePipe.failed)
        runCommand(command);
}

bool pipeIsActive()
{
    return linePipe.active;
}

void appendToPipe(const char* text)
{
    pieces.append(text, store);
}

PipedOutput::PipedOutput() : terminal_(-1)
{
    std::fflush(stdout);
    if (!linePipe.active)
        return;
    pieces.finish(store);
    int file = linePipe.failed ? -1 : openForTools();
    if (file < 0) {
        linePipe.failed = true;
        file = open("/dev/null", O_WRONLY | O_CLOEXEC);
    }
    terminal_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (terminal_ >= 0)
        dup2(file, STDOUT_FILENO);
    close(file);
}

PipedOutput::~PipedOutput()
{
    if (terminal_ < 0)
        return;
    if (std::fflush(stdout) != 0 || linePipe.failed || !hasRoom())
        linePipe.failed = true;
    dup2(terminal_, STDOUT_FILENO);
    close(terminal_);
}
