// Reading and writing whole files. A transfer that a signal interrupts is continued.

#ifndef BASE_FILE_H
#define BASE_FILE_H

#include <cerrno>
#include <cstddef>
#include <sys/types.h>

/// Calls `transfer(done)`, which returns what read() or write() returns, until `size` bytes are transferred or a call
/// transfers none. Repeats a call that a signal interrupted. Returns the number of bytes, or -1 if a call failed.
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

/// Reads up to `size` bytes. Returns their number, which is less than `size` at the end of the file, or -1 if reading
/// failed.
ssize_t readAll(int fd, void* bytes, std::size_t size);

/// Writes `size` bytes. Returns false if not all of them could be written.
bool writeAll(int fd, const void* bytes, std::size_t size);

/// Opens a device file for reading if it is a regular file. Does not wait for a writer if it is a FIFO. Returns the
/// descriptor, which the caller closes, and stores the size of the file in `size`. -1 if it cannot be opened; `size` is
/// then unchanged.
int openPlainFile(const char* devicePath, std::size_t* size = nullptr);

/// Creates an empty device file that only its owner can read and write. First removes a file that has this name, so
/// that nothing is written through a link. Returns false if the file cannot be created.
bool makePrivateFile(const char* devicePath);

#endif
