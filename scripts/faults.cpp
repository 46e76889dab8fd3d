// A preloaded library that counts library calls of the shell, and makes some of them fail.
//
// FAULT_COUNTS names a file with one 32-bit counter for each kind of call. All shells of a session use the same file.
// FAULT is "KIND/N/MODE". With the mode "transient", the Nth call of the kind fails. With "persistent", the Nth and
// all later calls of the kind fail.
// For each failed call, a line with the kind and the path of the file is appended to the file that FAULT_LOG names. If
// the file is opened for writing only, the line is "open for writing PATH".
// Without FAULT, a record `Place` is appended to the file that FAULT_PLACES names, for each counted call.
// Calls that the C library makes by itself, such as the read() of fgets(), are not counted, apart from malloc().
// Programs other than "cli" are not changed.

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <iterator>
#include <string_view>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

namespace
{

struct Kind {
    std::string_view name;
    int error; ///< errno of a failing call
};

enum KindIndex { kMalloc, kOpen, kWrite, kFsync, kRename, kRead, kFlock, kIoctl, kFork, kExchange };

constexpr Kind kKinds[] = {
    {"malloc", ENOMEM}, {"open", EMFILE},  {"write", ENOSPC}, {"fsync", EIO},   {"rename", EIO},
    {"read", EIO},      {"flock", ENOLCK}, {"ioctl", EIO},    {"fork", EAGAIN}, {"exchange", ECONNRESET},
};

struct Fault {
    std::atomic<std::uint32_t>* counts; ///< null: this process is not changed
    pid_t process;                      ///< the shell; not its forked children
    int kind;                           ///< -1: no call fails
    std::uint32_t number;
    bool isPersistent;
    bool isRecording; ///< backtrace() runs; it may allocate memory, which does not count
};

constinit Fault fault{};

/// A counted call. The integers have the byte order of the machine.
struct Place {
    std::uint32_t kind;
    std::uint32_t number;
    std::uint64_t stack; ///< a hash of the call stack, the same in each process
};

bool isShell()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return length > 0 && std::string_view(path, static_cast<std::size_t>(length)).ends_with("/cli");
}

[[gnu::constructor]] void prepare()
{
    const char* counts = std::getenv("FAULT_COUNTS");
    if (counts == nullptr || !isShell())
        return;
    fault.kind = -1;
    char name[16] = "";
    char mode[16] = "";
    const char* text = std::getenv("FAULT");
    if (text != nullptr && std::sscanf(text, "%15[^/]/%u/%15s", name, &fault.number, mode) == 3) // NOLINT(cert-err34-c)
        for (int i = 0; i < static_cast<int>(std::size(kKinds)); ++i)
            if (kKinds[i].name == name)
                fault.kind = i;
    fault.isPersistent = std::strcmp(mode, "persistent") == 0;
    fault.process = getpid();
    const int fd = openat(AT_FDCWD, counts, O_RDWR | O_CLOEXEC);
    void* mapped = mmap(nullptr, sizeof(std::uint32_t) * std::size(kKinds), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    if (mapped != MAP_FAILED)
        fault.counts = static_cast<std::atomic<std::uint32_t>*>(mapped);
}

/// Appends bytes to a file. Calls the kernel directly, because the functions of the library count calls.
void append(const char* file, const void* bytes, std::size_t size)
{
    const auto fd = syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    syscall(SYS_write, fd, bytes, size);
    syscall(SYS_close, fd);
}

void logFailure(KindIndex kind, const char* path, bool isWriteOnly)
{
    const char* log = std::getenv("FAULT_LOG");
    char line[4200];
    const int length = std::snprintf(line, sizeof line, "%s %s%s\n", kKinds[kind].name.data(),
                                     isWriteOnly ? "for writing " : "", path);
    if (log != nullptr)
        append(log, line, static_cast<std::size_t>(length));
}

/// Records a counted call. The hash of the call stack is FNV-1a, with an offset in place of each byte.
void recordPlace(KindIndex kind, std::uint32_t number)
{
    const char* places = std::getenv("FAULT_PLACES");
    if (fault.kind >= 0 || places == nullptr)
        return;
    void* frames[64];
    fault.isRecording = true;
    const int count = backtrace(frames, std::size(frames));
    fault.isRecording = false;
    Place place{static_cast<std::uint32_t>(kind), number, 0xcbf29ce484222325};
    for (int i = 0; i < count; ++i) {
        // Addresses in a library differ from process to process, offsets do not.
        dl_find_object object{};
        _dl_find_object(frames[i], &object);
        const auto offset = static_cast<char*>(frames[i]) - static_cast<char*>(object.dlfo_map_start);
        place.stack = (place.stack ^ static_cast<std::uint64_t>(offset)) * 0x100000001b3;
    }
    append(places, &place, sizeof place);
}

/// Counts a call for the file `path`. If the call has to fail, sets errno and returns true.
bool fails(KindIndex kind, const char* path = "", bool isWriteOnly = false)
{
    if (fault.counts == nullptr || fault.isRecording || getpid() != fault.process)
        return false;
    const std::uint32_t number = ++fault.counts[kind];
    recordPlace(kind, number);
    if (fault.kind != kind || number < fault.number || (number > fault.number && !fault.isPersistent))
        return false;
    if (kind != kMalloc)
        logFailure(kind, path, isWriteOnly);
    errno = kKinds[kind].error;
    return true;
}

/// The same for a call with a file descriptor.
bool fails(KindIndex kind, int fd)
{
    char link[32];
    char path[4096] = "";
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    if (fault.kind == kind && readlink(link, path, sizeof path - 1) < 0)
        path[0] = '\0';
    return fails(kind, path);
}

/// The function of the same name that this library replaces.
template <typename Result, typename... Arguments>
struct Next {
    using Function = Result (*)(Arguments...);

    Result operator()(Arguments... arguments)
    {
        if (function == nullptr)
            function = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
        return function(arguments...);
    }

    const char* name;
    Function function = nullptr;
};

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the names in the C library's headers are reserved
extern "C" {

void* malloc(std::size_t size)
{
    static constinit Next<void*, std::size_t> real{"malloc"};
    return fails(kMalloc) ? nullptr : real(size);
}

void* realloc(void* old, std::size_t size)
{
    static constinit Next<void*, void*, std::size_t> real{"realloc"};
    return fails(kMalloc) ? nullptr : real(old, size);
}

void* calloc(std::size_t count, std::size_t size)
{
    static constinit Next<void*, std::size_t, std::size_t> real{"calloc"};
    return fails(kMalloc) ? nullptr : real(count, size);
}

char* strdup(const char* text)
{
    static constinit Next<char*, const char*> real{"strdup"};
    return fails(kMalloc) ? nullptr : real(text);
}

int open64(const char* path, int flags, ...)
{
    static constinit Next<int, const char*, int, mode_t> real{"open64"};
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails(kOpen, path, (flags & O_WRONLY) != 0) ? -1 : real(path, flags, mode);
}

// This replaces open(), which libraries call. It has another name in C++, because <fcntl.h> renames open() to open64().
[[gnu::alias("open64"), gnu::nonnull(1)]] int openForLibraries(const char* path, int flags, ...) asm("open");

int openat64(int folder, const char* path, int flags, ...)
{
    static constinit Next<int, int, const char*, int, mode_t> real{"openat64"};
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails(kOpen, path, (flags & O_WRONLY) != 0) ? -1 : real(folder, path, flags, mode);
}

FILE* fopen64(const char* path, const char* mode)
{
    static constinit Next<FILE*, const char*, const char*> real{"fopen64"};
    return fails(kOpen, path) ? nullptr : real(path, mode);
}

ssize_t write(int fd, const void* bytes, std::size_t size)
{
    static constinit Next<ssize_t, int, const void*, std::size_t> real{"write"};
    return fails(kWrite, fd) ? -1 : real(fd, bytes, size);
}

ssize_t pwrite64(int fd, const void* bytes, std::size_t size, off64_t offset)
{
    static constinit Next<ssize_t, int, const void*, std::size_t, off64_t> real{"pwrite64"};
    return fails(kWrite, fd) ? -1 : real(fd, bytes, size, offset);
}

int fsync(int fd)
{
    static constinit Next<int, int> real{"fsync"};
    return fails(kFsync, fd) ? -1 : real(fd);
}

int rename(const char* from, const char* to)
{
    static constinit Next<int, const char*, const char*> real{"rename"};
    return fails(kRename, to) ? -1 : real(from, to);
}

ssize_t read(int fd, void* bytes, std::size_t size)
{
    static constinit Next<ssize_t, int, void*, std::size_t> real{"read"};
    return fails(kRead, fd) ? -1 : real(fd, bytes, size);
}

ssize_t pread64(int fd, void* bytes, std::size_t size, off64_t offset)
{
    static constinit Next<ssize_t, int, void*, std::size_t, off64_t> real{"pread64"};
    return fails(kRead, fd) ? -1 : real(fd, bytes, size, offset);
}

// This replaces flock(). It has another name in C++, because <fcntl.h> also defines a structure `flock`.
int lockFile(int fd, int operation) asm("flock");

int lockFile(int fd, int operation)
{
    static constinit Next<int, int, int> real{"flock"};
    return fails(kFlock, fd) ? -1 : real(fd, operation);
}

// If the file is no terminal, the two calls fail as usual and are not counted.
int tcgetattr(int fd, termios* modes)
{
    static constinit Next<int, int, termios*> real{"tcgetattr"};
    return real(fd, modes) != 0 || fails(kIoctl) ? -1 : 0;
}

int tcsetattr(int fd, int actions, const termios* modes)
{
    static constinit Next<int, int, int, const termios*> real{"tcsetattr"};
    return isatty(fd) == 0 || !fails(kIoctl) ? real(fd, actions, modes) : -1;
}

int ioctl(int fd, unsigned long request, ...)
{
    static constinit Next<int, int, unsigned long, void*> real{"ioctl"};
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return fails(kIoctl) ? -1 : real(fd, request, argument);
}

pid_t fork()
{
    static constinit Next<pid_t> real{"fork"};
    return fails(kFork) ? -1 : real();
}

int system(const char* command)
{
    static constinit Next<int, const char*> real{"system"};
    return fails(kFork) ? -1 : real(command);
}

ssize_t sendmsg(int fd, const msghdr* message, int flags)
{
    static constinit Next<ssize_t, int, const msghdr*, int> real{"sendmsg"};
    return fails(kExchange) ? -1 : real(fd, message, flags);
}

ssize_t recvmsg(int fd, msghdr* message, int flags)
{
    static constinit Next<ssize_t, int, msghdr*, int> real{"recvmsg"};
    return fails(kExchange) ? -1 : real(fd, message, flags);
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
