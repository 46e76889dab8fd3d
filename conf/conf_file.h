// The text of the configuration files: lines in the form `key=value`, and comments, which begin with '#'.

#ifndef CONF_CONF_FILE_H
#define CONF_CONF_FILE_H

#include <cstddef>

#include "base/file_lines.h"

/// Splits `line` in place at its first '='. Keeps blanks. If there is no '=', returns false and changes
/// nothing.
bool splitConfLine(char* line, char** key, char** value);

/// Reads the items of a configuration file. Skips comments and empty lines, and prints a message for a bad line.
class ConfItems
{
public:
    /// `reader` is the name of the operation in messages.
    ConfItems(const char* reader, const char* devicePath);

    [[nodiscard]] bool isOpen() const { return lines_.isOpen(); }

    /// Reads the next item. Returns false at the end of the file. If the file cannot be opened or read, prints a
    /// message and returns false. Key and value are valid until the next call.
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

/// The text of a configuration file that is being composed.
class ConfText
{
public:
    [[gnu::format(printf, 2, 3)]] void append(const char* format, ...);

    /// Whether everything that was appended fitted.
    [[nodiscard]] bool isComplete() const { return complete_; }
    [[nodiscard]] const char* bytes() const { return bytes_; }
    [[nodiscard]] std::size_t length() const { return length_; }

private:
    static constexpr std::size_t kSize = 8192; ///< bytes; the longest possible file has less than 5000

    bool complete_ = true;
    std::size_t length_ = 0;
    char bytes_[kSize];
};

#endif
