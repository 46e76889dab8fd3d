// Tells whether a configuration file has changed since the session read or wrote it.

#ifndef CONF_FILE_WATCH_H
#define CONF_FILE_WATCH_H

#include <cstdint>
#include <optional>

/// Modification time and inode number of a file. The seconds are truncated to the 32 bits of the records' field. Some
/// file systems store whole seconds only. The inode number differs after a file was replaced in the same second.
struct ConfFileTime {
    std::uint32_t seconds;
    std::uint32_t nanoseconds;
    std::uint64_t number;

    bool operator==(const ConfFileTime&) const = default;
};

enum class ConfFileStatus : std::uint8_t {
    kKnown,
    kMissing, ///< the file does not exist
    kUnknown, ///< stat() failed; the file may still be readable
};

/// Stores the modification time and the inode number of a file in `time`, or zeros if they are not known.
ConfFileStatus confFileTime(const char* devicePath, ConfFileTime* time);

/// The state of a configuration file when the session last read or wrote it.
class FileWatch
{
public:
    explicit constexpr FileWatch(const char* devicePath) : path_(devicePath) {}

    /// Whether the file exists.
    [[nodiscard]] bool exists() const;

    /// Whether the file differs from the one last read or written, or the last attempt to read it failed.
    [[nodiscard]] bool hasChanged() const;

    /// Whether the file can be read to its end. Reads it without a message and discards what it has read.
    [[nodiscard]] bool canBeRead() const;

    /// Whether the file was written after the snapshot of the record was taken.
    [[nodiscard]] bool isNewerThanSnapshot() const { return isNewerThanSnapshot_; }

    /// Modification time of the file that was last read or written, in seconds; 0 if there was none.
    [[nodiscard]] std::uint32_t seconds() const { return known_ ? known_->seconds : 0; }

    /// Calls `take`, which reads the file and returns true, or prints a message and returns false. After a failure,
    /// `take` is not called again until the file has changed or can be read, so the message is printed once. Returns
    /// whether the file was read.
    template <typename Take>
    bool read(Take take);

    /// To be called before the file is replaced. If the file has changed, calls `take` to read it. If that fails,
    /// prints a message and returns false; unlike read(), prints the message at every call.
    template <typename Take>
    bool catchUp(Take take);

    /// To be called when the session has written the file. isNewerThanSnapshot() is true until the file is read again.
    /// The next refresh reads the file, unless the old file was written in the same second as the new one.
    void noteWritten();

private:
    void noteRead(const ConfFileTime& time);
    void printUnreadable();

    const char* path_;
    std::optional<ConfFileTime> known_;      ///< the file that was last read or written
    std::optional<ConfFileTime> unreadable_; ///< the file that could not be read and for which the message was printed
    bool isNewerThanSnapshot_ = false;
};

template <typename Take>
bool FileWatch::read(Take take)
{
    ConfFileTime time;
    const bool isThere = confFileTime(path_, &time) != ConfFileStatus::kMissing;
    if (isThere && unreadable_ == time && !canBeRead())
        return false;
    if (take()) {
        noteRead(time);
        return true;
    }
    unreadable_ = time;
    return false;
}

template <typename Take>
bool FileWatch::catchUp(Take take)
{
    if (!hasChanged() || (canBeRead() && take()))
        return true;
    printUnreadable();
    return false;
}

#endif
