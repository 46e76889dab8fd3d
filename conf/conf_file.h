// The configuration files as text: `key=value` lines, comments that begin with '#', one line feed after each.

#ifndef CONF_CONF_FILE_H
#define CONF_CONF_FILE_H

#include <cstddef>

#include "base/file_lines.h"

/// Splits `line` in place at its first '='; blanks stay. False, and nothing changed, without one.
bool splitConfLine(char* line, char** key, char** value);

/// Reads the items of a configuration file: comments and empty lines are passed over, bad lines reported.
class ConfItems
{
public:
    /// `reader` is the operation that the messages name.
    ConfItems(const char* reader, const char* devicePath);

    [[nodiscard]] bool isOpen() const { return lines_.isOpen(); }

    /// Takes the next item; false at the end, and when the file cannot be opened or read, which is said. Both texts are
    /// valid until the next call.
    bool next();
    [[nodiscard]] bool failed() const { return lines_.failed(); }
    [[nodiscard]] const char* key() const { return key_; }
    [[nodiscard]] const char* value() const { return value_; }

private:
    const char* reader_;
    const char* path_;
    FileLines lines_;
    char* key_ = nullptr;
    char* value_ = nullptr;
};

/// The text of a configuration file while it is composed.
class ConfText
{
public:
    [[gnu::format(printf, 2, 3)]] void append(const char* format, ...);

    /// Whether everything that was appended fitted.
    [[nodiscard]] bool isComplete() const { return complete_; }
    [[nodiscard]] const char* bytes() const { return bytes_; }
    [[nodiscard]] std::size_t length() const { return length_; }

private:
    static constexpr std::size_t kSize = 8192; ///< both lists full and every text at its longest need less than 5000

    bool complete_ = true;
    std::size_t length_ = 0;
    char bytes_[kSize];
};

/// While one lives, no other shell saves a configuration file. A holder may take it again; it waits for others alone.
class ConfFolderLock
{
public:
    /// Waits for the others for at most a second.
    ConfFolderLock();
    ~ConfFolderLock();
    ConfFolderLock(const ConfFolderLock&) = delete;
    ConfFolderLock& operator=(const ConfFolderLock&) = delete;

    /// False when another shell did not come to its end. A folder that cannot be locked is no obstacle.
    [[nodiscard]] static bool isOurs();
};

/// Replaces a configuration file by `text`, whole or not at all: a reader finds the old file or the new one, whatever
/// happens meanwhile. Only a file that alone is writable in its folder is written in place. The new
/// file is never as old as the one before it. 0, or -1 with the old file as it was: silently when it cannot be opened,
/// with a message when the text cannot be written to its end or another shell keeps the lock.
int replaceConfFile(const char* devicePath, const ConfText& text);

/// Has a configuration file that a tool wrote, and its folder, reach the disk.
void syncConfFile(const char* devicePath);

#endif
