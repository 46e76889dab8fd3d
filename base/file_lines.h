// Reads a text file of the access point line by line.

#ifndef BASE_FILE_LINES_H
#define BASE_FILE_LINES_H

#include <cstddef>

/// Reads the file with a device path (see DeviceFile) line by line. Opens regular files only and reads at most their
/// first kLimit bytes, so that a device node, a FIFO or a growing file cannot block the shell.
class FileLines
{
public:
    /// Longest line, with its line feed and a terminator. A longer line is read as several lines.
    static constexpr std::size_t kLineSize = 256;
    static constexpr std::size_t kLimit = 1024UL * 1024UL;

    explicit FileLines(const char* devicePath);
    ~FileLines();
    FileLines(const FileLines&) = delete;
    FileLines& operator=(const FileLines&) = delete;

    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }

    /// Returns the next line without its line feed. Null at the end of the file and after a failure. The line is valid
    /// until the next call.
    char* next();

    /// Whether the last line had a line feed.
    [[nodiscard]] bool isWhole() const { return isWhole_; }

    /// Whether the file could not be opened or could not be read to its end.
    [[nodiscard]] bool failed() const { return failed_; }

    /// Number of lines that next() has returned.
    [[nodiscard]] int count() const { return count_; }

private:
    bool fill();

    std::size_t unread_ = 0; ///< bytes that may still be read
    int fd_;
    bool failed_;
    bool isWhole_ = false;
    int count_ = 0;
    std::size_t position_ = 0;
    std::size_t filled_ = 0;
    char chunk_[4096]; ///< the part of the file that was read last; most files fit into it
    char line_[kLineSize];
};

#endif
