#include "cli/output.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "platform/device_file.h"

namespace
{

constexpr std::size_t kPipeBufferSize = 4096;

struct Pipe {
    bool active;
    bool hasFile; ///< the pipe file is this line's own
    std::size_t length;
    char buffer[kPipeBufferSize];
};

constinit Pipe pipeState{};
constinit char message[kMessageSize]{};

bool writeAll(int fd, const char* bytes, std::size_t length)
{
    while (length > 0) {
        const ssize_t written = write(fd, bytes, length);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        length -= static_cast<std::size_t>(written);
    }
    return true;
}

void appendToPipe(const char* text)
{
    std::size_t left = std::strlen(text);
    while (left > 0) {
        const std::size_t room = kPipeBufferSize - pipeState.length;
        const std::size_t taken = left < room ? left : room;
        std::memcpy(pipeState.buffer + pipeState.length, text, taken);
        pipeState.length += taken;
        text += taken;
        left -= taken;
        if (pipeState.length == kPipeBufferSize && flushPipe() != 0)
            return;
    }
}

} // namespace

void cli_print(const char* text)
{
    if (pipeState.active)
        appendToPipe(text);
    else
        std::fputs(text, stdout);
}

int cli_printf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    cli_print(message);
    constexpr int kLongest = static_cast<int>(kMessageSize) - 1;
    return length < kLongest ? length : kLongest;
}

int echoWords(int argc, char** argv)
{
    for (int i = 0; i < argc; ++i) {
        cli_print(argv[i]);
        cli_print(" ");
    }
    cli_print("\n");
    return 0;
}

int createPipeFile()
{
    const DeviceFile file(kPipeFile);
    unlink(file.path());
    const int fd = open(file.path(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd < 0)
        return -1;
    close(fd);
    return 0;
}

int beginPipe()
{
    pipeState.active = true;
    pipeState.length = 0;
    pipeState.hasFile = createPipeFile() == 0;
    return pipeState.hasFile ? 0 : -1;
}

int flushPipe()
{
    if (pipeState.length == 0)
        return 0;
    if (!pipeState.hasFile)
        return -1;
    const int fd = open(DeviceFile(kPipeFile).path(), O_WRONLY | O_APPEND | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return -1;
    writeAll(fd, pipeState.buffer, pipeState.length);
    close(fd);
    pipeState.length = 0;
    return 0;
}

void endPipe()
{
    pipeState.active = false;
    pipeState.length = 0;
}

bool pipeIsActive()
{
    return pipeState.active;
}
