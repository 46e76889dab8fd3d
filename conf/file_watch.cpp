#include "conf/file_watch.h"

#include <cerrno>
#include <sys/stat.h>

#include "base/file_lines.h"
#include "conf/messages.h"
#include "platform/device_file.h"
#include "shell/output.h"

ConfFileStatus confFileTime(const char* devicePath, ConfFileTime* time)
{
    struct stat status;
    *time = {};
    if (stat(DeviceFile(devicePath).path(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? ConfFileStatus::kMissing : ConfFileStatus::kUnknown;
    *time = {.seconds = static_cast<std::uint32_t>(status.st_mtim.tv_sec),
             .nanoseconds = static_cast<std::uint32_t>(status.st_mtim.tv_nsec),
             .number = status.st_ino};
    return ConfFileStatus::kKnown;
}

bool FileWatch::exists() const
{
    ConfFileTime time;
    return confFileTime(path_, &time) != ConfFileStatus::kMissing;
}

bool FileWatch::hasChanged() const
{
    ConfFileTime time;
    const ConfFileStatus status = confFileTime(path_, &time);
    if (unreadable_)
        return status != ConfFileStatus::kMissing;
    return status == ConfFileStatus::kKnown && known_ != time;
}

bool FileWatch::canBeRead() const
{
    FileLines lines(path_);
    while (lines.next() != nullptr)
        ;
    return !lines.failed();
}

void FileWatch::noteRead(const ConfFileTime& time)
{
    known_ = time;
    unreadable_.reset();
    isNewerThanSnapshot_ = false;
}

void FileWatch::noteWritten()
{
    ConfFileTime time;
    confFileTime(path_, &time);
    if (known_ && known_->seconds == time.seconds)
        known_ = time;
    else
        known_.reset();
    isNewerThanSnapshot_ = true;
}

void FileWatch::printUnreadable()
{
    ConfFileTime time;
    confFileTime(path_, &time);
    unreadable_ = time;
    cli_printf(kCanNotRead, path_);
}
