#include "conf/conf_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file.h"
#include "platform/device_file.h"
#include "shell/output.h"

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

ConfFileStatus confFileTime(const char* devicePath, ConfFileTime* time)
{
    struct stat status;
    *time = {};
    if (stat(DeviceFile(devicePath).path(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? ConfFileStatus::Missing : ConfFileStatus::Unknown;
    *time = {.seconds = static_cast<std::uint32_t>(status.st_mtim.tv_sec),
             .nanoseconds = static_cast<std::uint32_t>(status.st_mtim.tv_nsec),
             .number = status.st_ino};
    return ConfFileStatus::Known;
}

ConfLines::ConfLines(const char* devicePath) : fd_(openPlainFile(devicePath)), failed_(fd_ < 0) {}

ConfLines::~ConfLines()
{
    if (fd_ >= 0)
        close(fd_);
}

bool ConfLines::fill()
{
    const std::size_t wanted = std::min(unread_, sizeof chunk_);
    if (failed_ || wanted == 0)
        return false;
    const ssize_t taken = readAll(fd_, chunk_, wanted);
    failed_ = taken < 0;
    if (taken <= 0)
        return false;
    position_ = 0;
    filled_ = static_cast<std::size_t>(taken);
    unread_ = filled_ < wanted ? 0 : unread_ - filled_;
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
    if (length == 0 || failed_)
        return nullptr;
    line_[ended ? length - 1 : length] = '\0';
    ++count_;
    return line_;
}

void sayConfUnreadable(const char* reader, const char* devicePath)
{
    cli_printf("%s: Could not open conf file %s.\n", reader, devicePath);
}

ConfItems::ConfItems(const char* reader, const char* devicePath)
    : reader_(reader), path_(devicePath), lines_(devicePath)
{
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
    if (failed())
        sayConfUnreadable(reader_, path_);
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
