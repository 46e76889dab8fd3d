// The open "bios" partition.

#ifndef BIOS_FLASH_DEVICE_H
#define BIOS_FLASH_DEVICE_H

#include <cstddef>
#include <sys/types.h>

#include "platform/flash_layout.h"

struct erase_info_user;

/// Writes the device path of the partition named "bios" into `path`. 0, or -1 with `path` as it was if there is none.
int biosFindMtdDevice(char* path, std::size_t size);

/// Opens the partition, locks it against other objects of this class, and closes it at the end. Another process's lock
/// is waited for for at most five seconds, then ignored; an interrupt while waiting leaves the partition closed. While
/// it is closed, nothing is read, written or erased.
class FlashDevice
{
public:
    enum class Access { kRead, kReadWrite };

    explicit FlashDevice(Access access);
    ~FlashDevice();
    FlashDevice(const FlashDevice&) = delete;
    FlashDevice& operator=(const FlashDevice&) = delete;

    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }

    /// Lets other processes use the partition until lock() takes it back, as the constructor took it.
    void unlock() const;
    void lock();

    /// Reads `size` bytes; those that the partition does not have are left alone. Returns how many were read, or -1.
    ssize_t read(std::size_t offset, void* bytes, std::size_t size) const;

    /// Writes `size` bytes. A block that holds its bytes already is left out: some flash is erased and programmed by
    /// the block, and a power cut meanwhile loses it. A write of one slot is one call to the system: it happens whole
    /// or not at all.
    void write(std::size_t offset, const void* bytes, std::size_t size) const;

    /// Whether the stored checksum matches.
    [[nodiscard]] bool crcMatches() const;

    /// Stores the checksum of `image`, or of the partition as it stands when that is null. False when it fails.
    [[nodiscard]] bool storeCrc(const FlashImage* image) const;

    /// Unlocks and erases every block.
    void erase();

private:
    [[nodiscard]] bool holds(std::size_t offset, const char* bytes, std::size_t size) const;
    void eraseRequest(unsigned long request, erase_info_user& block);

    static constexpr std::size_t kPathSize = 32;

    char path_[kPathSize]{};
    int fd_ = -1;
    bool isLockIgnored_ = false; ///< another process did not give it up in time
    int characterFd_ = -1; ///< of the same partition's character device, opened by the first request that needs it
};

#endif
