// The flash partition named "bios".

#ifndef BIOS_FLASH_DEVICE_H
#define BIOS_FLASH_DEVICE_H

#include <cstddef>
#include <sys/types.h>

#include "platform/flash_layout.h"

struct erase_info_user;

/// Writes the device path of the partition named "bios" to `path` and returns 0. If there is none, returns -1 and
/// leaves `path` unchanged.
int biosFindMtdDevice(char* path, std::size_t size);

/// The open partition. The constructor opens it and takes an advisory lock. While another process holds the lock, the
/// constructor waits for at most five seconds, and then continues without the lock. If the user presses Ctrl-C during
/// this time, it closes the partition. On a closed partition, read() returns -1, crcMatches() and storeCrc() return
/// false, and all other operations do nothing.
class FlashDevice
{
public:
    enum class Access { kRead, kReadWrite };

    explicit FlashDevice(Access access);
    ~FlashDevice();
    FlashDevice(const FlashDevice&) = delete;
    FlashDevice& operator=(const FlashDevice&) = delete;

    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }

    /// unlock() releases the lock. lock() takes it again, in the same way as the constructor.
    void unlock() const;
    void lock();

    /// Reads `size` bytes, or fewer if the partition ends before. Returns the number of bytes, or -1.
    ssize_t read(std::size_t offset, void* bytes, std::size_t size) const;

    /// Writes `size` bytes. Skips an erase block whose bytes are the same already, because some drivers erase and
    /// program the whole block, and a power cut between these two steps loses its contents. A slot of FlashImage is
    /// written by one system call. A failure is not reported.
    void write(std::size_t offset, const void* bytes, std::size_t size) const;

    /// Whether the stored checksum matches.
    [[nodiscard]] bool crcMatches() const;

    /// Stores the checksum of `image`, or of the partition if `image` is null. Returns false if that fails.
    [[nodiscard]] bool storeCrc(const FlashImage* image) const;

    /// Unlocks and erases every block.
    void erase();

private:
    [[nodiscard]] bool holds(std::size_t offset, const char* bytes, std::size_t size) const;
    void eraseRequest(unsigned long request, erase_info_user& block);

    static constexpr std::size_t kPathSize = 32;

    char path_[kPathSize]{};
    int fd_ = -1;
    bool isLockIgnored_ =
        false;             ///< the partition is used without the lock, because another process has kept it for too long
    int characterFd_ = -1; ///< the character device of the same partition; opened by the first request that needs it
};

#endif
