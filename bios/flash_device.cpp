#include "bios/flash_device.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <mtd/mtd-user.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "base/file.h"
#include "platform/device_file.h"
#include "platform/system_library.h"
#include "shell/signals.h"

namespace
{

constexpr std::size_t kEraseBlockSize = 0x20000;

static_assert(sizeof(FlashImage) % kEraseBlockSize == 0);

int openNode(const char* path, int flags)
{
    return open(DeviceFile(path).path(), flags | O_CLOEXEC);
}

/// Opens the device for writing and closes it again. Returns false if it cannot be opened; the system then uses another
/// path for the device.
bool tryToOpen(const char* path)
{
    const int fd = openNode(path, O_RDWR | O_SYNC);
    if (fd < 0)
        return false;
    close(fd);
    return true;
}

enum class LockOutcome { kDone, kTimedOut, kInterrupted };

/// Takes the advisory lock. While another process holds it, tries again until five seconds have passed or an interrupt
/// from the keyboard arrives.
LockOutcome waitForLock(int fd)
{
    constexpr timespec kPause = {0, 1'000'000};
    constexpr time_t kPatience = 5;
    timespec start;
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &start);
    do {
        if (flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
            return LockOutcome::kDone;
        nanosleep(&kPause, nullptr);
        if (isInterrupted())
            return LockOutcome::kInterrupted;
        clock_gettime(CLOCK_MONOTONIC, &now);
    } while (now.tv_sec - start.tv_sec - (now.tv_nsec < start.tv_nsec ? 1 : 0) < kPatience);
    return LockOutcome::kTimedOut;
}

/// Calls ioctl(). Converts `request` to the parameter type that the C library declares, because C libraries declare
/// different types.
template <typename Request>
int control(int (*ioctl)(int, Request, ...), int fd, unsigned long request, erase_info_user& block)
{
    return ioctl(fd, static_cast<Request>(request), &block);
}

} // namespace

int biosFindMtdDevice(char* path, std::size_t size)
{
    FILE* partitions = std::fopen(DeviceFile("/proc/mtd").path(), "re");
    if (partitions == nullptr)
        return -1;
    int index = 0;
    bool found = false;
    char piece[32]; // a longer line is read as several
    while (!found && std::fgets(piece, sizeof piece, partitions) != nullptr)
        found = std::sscanf(piece, "mtd%d:", &index) == 1 && std::strstr(piece, "bios") != nullptr;
    std::fclose(partitions);
    if (!found)
        return -1;

    std::snprintf(path, size, "/dev/mtdblock/%d", index);
    if (!tryToOpen(path))
        std::snprintf(path, size, "/dev/mtdblock%d", index);
    return 0;
}

FlashDevice::FlashDevice(Access access)
{
    if (biosFindMtdDevice(path_, sizeof path_) == 0)
        fd_ = openNode(path_, access == Access::kRead ? O_RDONLY : O_RDWR);
    lock();
}

FlashDevice::~FlashDevice()
{
    if (characterFd_ >= 0)
        close(characterFd_);
    if (isOpen())
        close(fd_);
}

void FlashDevice::lock()
{
    if (!isOpen() || isLockIgnored_)
        return;
    const LockOutcome outcome = waitForLock(fd_);
    isLockIgnored_ = outcome == LockOutcome::kTimedOut;
    if (outcome == LockOutcome::kInterrupted) {
        close(fd_);
        fd_ = -1;
    }
}

void FlashDevice::unlock() const
{
    if (isOpen())
        flock(fd_, LOCK_UN);
}

ssize_t FlashDevice::read(std::size_t offset, void* bytes, std::size_t size) const
{
    return transferAll(size, [&](std::size_t done, std::size_t rest) {
        return pread(fd_, static_cast<char*>(bytes) + done, rest, static_cast<off_t>(offset + done));
    });
}

// The bytes of each erase block are written by a separate call.
void FlashDevice::write(std::size_t offset, const void* bytes, std::size_t size) const
{
    const char* piece = static_cast<const char*>(bytes);
    const std::size_t end = offset + size;
    while (offset < end) {
        const std::size_t length = std::min(end - offset, kEraseBlockSize - offset % kEraseBlockSize);
        if (!holds(offset, piece, length))
            transferAll(length, [&](std::size_t done, std::size_t rest) {
                return pwrite(fd_, piece + done, rest, static_cast<off_t>(offset + done));
            });
        offset += length;
        piece += length;
    }
}

bool FlashDevice::holds(std::size_t offset, const char* bytes, std::size_t size) const
{
    char present[4096];
    for (std::size_t done = 0; done < size; done += sizeof present) {
        const std::size_t length = std::min(size - done, sizeof present);
        if (read(offset + done, present, length) != static_cast<ssize_t>(length) ||
            std::memcmp(present, bytes + done, length) != 0)
            return false;
    }
    return true;
}

bool FlashDevice::crcMatches() const
{
    return osbios_CheckCRC(fd_, 0, 0) >= 0;
}

bool FlashDevice::storeCrc(const FlashImage* image) const
{
    return osbios_SetCrc(fd_, image) >= 0;
}

void FlashDevice::erase()
{
    if (!isOpen())
        return;
    erase_info_user block{.start = 0, .length = kEraseBlockSize};
    for (; block.start < sizeof(FlashImage); block.start += block.length) {
        eraseRequest(MEMUNLOCK, block);
        eraseRequest(MEMERASE, block);
    }
}

// Most kernels support these requests on the character device only. So if the open device refuses the request, it is
// sent to the character device.
void FlashDevice::eraseRequest(unsigned long request, erase_info_user& block)
{
    if (control(ioctl, fd_, request, block) == 0 || (errno != ENOTTY && errno != EINVAL))
        return;
    if (characterFd_ < 0) {
        char path[kPathSize];
        std::snprintf(path, sizeof path, "/dev/mtd%s", std::strpbrk(path_, "0123456789"));
        characterFd_ = openNode(path, O_RDWR);
    }
    if (characterFd_ >= 0)
        control(ioctl, characterFd_, request, block);
}
