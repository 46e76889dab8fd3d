// Reading and writing whole files. A transfer that a signal interrupts is continued.

#ifndef BASE_FILE_H
#define BASE_FILE_H

#include <cerrno>
#include <cstddef>
#include <sys/types.h>

/// Calls `transfer(done, rest)`, which returns what read() or write() of the `rest` bytes returns, until `size` bytes
/// are transferred or a call transfers none. `done` is the number of bytes that are transferred already. Repeats a call
/// that a signal interrupted. Returns the number of bytes, or -1 if a call failed.
template <typename Transfer>
ssize_t transferAll(std::size_t size, Transfer transfer)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = transfer(done, size - done);
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

/// Opens the file with a device path (see DeviceFile) for reading. Returns the descriptor, which the caller closes, and
/// stores the size of the file in `size`. If the file cannot be opened or is not a regular file, returns -1 and leaves
/// `size` unchanged. If the file is a FIFO, does not wait for a writer.
int openPlainFile(const char* devicePath, std::size_t* size = nullptr);

/// Creates an empty regular file at a device path (see DeviceFile). Only its owner can read and write it. First removes
/// an old file of this name, so that nothing is written through a link. Returns false if the file cannot be created.
bool makePrivateFile(const char* devicePath);

#endif
