// Reading and writing files whole, whatever signals arrive.

#ifndef BASE_FILE_H
#define BASE_FILE_H

#include <cerrno>
#include <cstddef>
#include <sys/types.h>

/// Makes calls of `transfer(done)`, which returns what read() and write() do, until `size` bytes are through or no more
/// go; one that a signal interrupts is made again. Returns the number of bytes, or -1 when a call failed.
template <typename Transfer>
ssize_t transferAll(std::size_t size, Transfer transfer)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = transfer(done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

/// Reads up to `size` bytes; an interrupted read is continued. Returns their number, fewer than `size` at the end of
/// the file, or -1 when reading failed.
ssize_t readAll(int fd, void* bytes, std::size_t size);

/// Writes `size` bytes; an interrupted write is continued. False when not all of them could be written.
bool writeAll(int fd, const void* bytes, std::size_t size);

/// Opens a device file for reading if it is a plain file: a pipe, a device or a folder in its place neither hangs the
/// caller nor is read. Returns the descriptor, which the caller closes, or -1; `size`, the file's, is then left alone.
int openPlainFile(const char* devicePath, std::size_t* size = nullptr);

/// Makes a device file anew, empty, for its owner alone; what stood at its name is removed, never written through.
/// False when it cannot be made.
bool makePrivateFile(const char* devicePath);

#endif
