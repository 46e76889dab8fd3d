#include "conf/conf_file.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/output.h"
#include "platform/device_file.h"

bool splitConfLine(char* line, char** key, char** value)
{
    char* equals = std::strchr(line, '=');
    if (equals == nullptr)
        return false;
    *equals = '\0';
    *key = line;
    *value = equals + 1;
    return true;
}

bool confFileTime(const char* devicePath, std::uint32_t* seconds)
{
    struct stat status;
    if (stat(DeviceFile(devicePath).path(), &status) != 0)
        return false;
    *seconds = static_cast<std::uint32_t>(status.st_mtime);
    return true;
}

// Opening must not wait for the other end of a pipe, hence O_NONBLOCK.
ConfLines::ConfLines(const char* devicePath)
    : fd_(open(DeviceFile(devicePath).path(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
{
    struct stat status;
    if (fd_ < 0)
        return;
    if (fstat(fd_, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(fd_);
        fd_ = -1;
        return;
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    unread_ = size < kConfFileLimit ? size : kConfFileLimit;
}

ConfLines::~ConfLines()
{
    if (fd_ >= 0)
        close(fd_);
}

bool ConfLines::fill()
{
    const ssize_t taken = read(fd_, chunk_, std::min(unread_, sizeof chunk_));
    if (taken <= 0)
        return false;
    position_ = 0;
    filled_ = static_cast<std::size_t>(taken);
    unread_ -= filled_;
    return true;
}

char* ConfLines::next()
{
    constexpr std::size_t kMost = sizeof line_ - 1;
    std::size_t length = 0;
    bool ended = false;
    while (!ended && length < kMost && (position_ < filled_ || fill())) {
        char* piece = line_ + length;
        std::size_t taken = std::min(filled_ - position_, kMost - length);
        if (const void* end = memccpy(piece, chunk_ + position_, '\n', taken); end != nullptr) {
            taken = static_cast<std::size_t>(static_cast<const char*>(end) - piece);
            ended = true;
        }
        position_ += taken;
        length += taken;
    }
    if (length == 0)
        return nullptr;
    line_[ended ? length - 1 : length] = '\0';
    ++count_;
    return line_;
}

ConfItems::ConfItems(const char* reader, const char* devicePath)
    : reader_(reader), path_(devicePath), lines_(devicePath)
{
    if (!isOpen())
        cli_printf("%s: Could not open conf file %s.\n", reader_, path_);
}

bool ConfItems::next()
{
    for (char* line = lines_.next(); line != nullptr; line = lines_.next()) {
        if (line[0] == '#' || line[0] == '\0')
            continue;
        if (splitConfLine(line, &key_, &value_))
            return true;
        cli_printf("%s: %s Line %d: Invalid line '%s'\n", reader_, path_, lines_.count(), line);
    }
    return false;
}

void ConfText::append(const char* format, ...)
{
    const std::size_t room = sizeof bytes_ - length_;
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(bytes_ + length_, room, format, arguments);
    va_end(arguments);
    if (length >= 0 && static_cast<std::size_t>(length) < room)
        length_ += static_cast<std::size_t>(length);
    else
        complete_ = false;
}
