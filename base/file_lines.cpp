#include "base/file_lines.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>

#include "base/file.h"

FileLines::FileLines(const char* devicePath) : fd_(openPlainFile(devicePath, &unread_)), failed_(fd_ < 0)
{
    unread_ = std::min(unread_, kLimit);
}

FileLines::~FileLines()
{
    if (fd_ >= 0)
        close(fd_);
}

bool FileLines::fill()
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

char* FileLines::next()
{
    constexpr std::size_t kMost = sizeof line_ - 1;
    std::size_t length = 0;
    isWhole_ = false;
    while (!isWhole_ && length < kMost && (position_ < filled_ || fill())) {
        char* piece = line_ + length;
        std::size_t taken = std::min(filled_ - position_, kMost - length);
        if (const void* end = memccpy(piece, chunk_ + position_, '\n', taken); end != nullptr) {
            taken = static_cast<std::size_t>(static_cast<const char*>(end) - piece);
            isWhole_ = true;
        }
        position_ += taken;
        length += taken;
    }
    if (length == 0 || failed_)
        return nullptr;
    line_[isWhole_ ? length - 1 : length] = '\0';
    ++count_;
    return line_;
}
