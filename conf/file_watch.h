// Whether a configuration file is still the one that the session knows.

#ifndef CONF_FILE_WATCH_H
#define CONF_FILE_WATCH_H

#include <cstdint>
#include <optional>

/// Modification time of a file, cut to the width of the records' field, and its number on the disk: some file systems
/// count only seconds, but a file that was replaced is another one.
struct ConfFileTime {
    std::uint32_t seconds;
    std::uint32_t nanoseconds;
    std::uint64_t number;

    bool operator==(const ConfFileTime&) const = default;
};

enum class ConfFileStatus : std::uint8_t {
    kKnown,
    kMissing, ///< there is no such file
    kUnknown, ///< its status cannot be had; it may still be readable
};

/// Stores the modification time of a device file, zeros unless it is known.
ConfFileStatus confFileTime(const char* devicePath, ConfFileTime* time);

/// The state of a configuration file, as a session last read or wrote it.
class FileWatch
{
public:
    explicit constexpr FileWatch(const char* devicePath) : path_(devicePath) {}

    /// Whether there is a file, readable or not.
    [[nodiscard]] bool exists() const;

    /// Whether the file may hold what the session has not seen: it is another than the one last read or written, or the
    /// last attempt to read it failed.
    [[nodiscard]] bool hasChanged() const;

    /// Whether the file can be read to its end. Reads it, says nothing and keeps nothing.
    [[nodiscard]] bool canBeRead() const;

    /// Whether the file was written after the snapshot of the record was taken.
    [[nodiscard]] bool isNewerThanSnapshot() const { return isNewerThanSnapshot_; }

    /// Modification time of the file last read, in seconds; 0 before the first.
    [[nodiscard]] std::uint32_t seconds() const { return known_ ? known_->seconds : 0; }

    /// Has `take` read the file, which returns whether it could, and says so if not. The failure is said once for a
    /// file in one state: `take` is then not called again until the file can be read. Returns whether it was read.
    template <typename Take>
    bool read(Take take);

    /// Before the file is written over: has `take` read what the session has not seen. False, which is said each time,
    /// if that cannot be read.
    template <typename Take>
    bool catchUp(Take take);

    /// To be called when the session has written the file. The next refresh reads it back, unless it has the same
    /// second as the file before it: then the snapshot is left behind.
    void noteWritten();

private:
    void noteRead(const ConfFileTime& time);
    void printUnreadable();

    const char* path_;
    std::optional<ConfFileTime> known_;      ///< of the file last read or written
    std::optional<ConfFileTime> unreadable_; ///< of the file that could not be read, which was said
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
