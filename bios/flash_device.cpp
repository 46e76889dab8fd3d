#include "bios/flash_device.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <mtd/mtd-user.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "cli/output.h"
#include "platform/device_file.h"
#include "platform/system_library.h"

namespace
{

constexpr std::size_t kPathSize = 32;
constexpr std::uint32_t kEraseBlockSize = 0x20000;

static_assert(sizeof(FlashImage) % kEraseBlockSize == 0);

/// Whether the device can be written, which tells the path that this system uses.
bool opens(const char* path)
{
    const int fd = open(DeviceFile(path).path(), O_RDWR | O_SYNC | O_CLOEXEC);
    if (fd < 0)
        return false;
    close(fd);
    return true;
}

int openPartition(int flags)
{
    char path[kPathSize]{};
    if (biosFindMtdDevice(path, sizeof path) != 0)
        return -1;
    return open(DeviceFile(path).path(), flags | O_CLOEXEC);
}

} // namespace

int biosFindMtdDevice(char* path, std::size_t size)
{
    FILE* partitions = std::fopen(DeviceFile("/proc/mtd").path(), "re");
    if (partitions == nullptr)
        return -1;
    int index = 0;
    bool found = false;
    while (!found && std::fgets(path, static_cast<int>(size), partitions) != nullptr)
        found = std::sscanf(path, "mtd%d:", &index) == 1 && std::strstr(path, "bios") != nullptr;
    std::fclose(partitions);
    if (!found)
        return -1;

    std::snprintf(path, size, "/dev/mtdblock/%d", index);
    if (!opens(path))
        std::snprintf(path, size, "/dev/mtdblock%d", index);
    return 0;
}

std::size_t readFully(int fd, void* bytes, std::size_t size)
{
    auto* const first = static_cast<std::uint8_t*>(bytes);
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = read(fd, first + done, size - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

FlashDevice::FlashDevice(Access access) : fd_(openPartition(access == Access::kRead ? O_RDONLY : O_RDWR)) {}

FlashDevice::~FlashDevice()
{
    if (isOpen())
        close(fd_);
}

void FlashDevice::read(std::size_t offset, void* bytes, std::size_t size) const
{
    lseek(fd_, static_cast<off_t>(offset), SEEK_SET);
    readFully(fd_, bytes, size);
}

void FlashDevice::write(std::size_t offset, const void* bytes, std::size_t size) const
{
    lseek(fd_, static_cast<off_t>(offset), SEEK_SET);
    for (const auto* next = static_cast<const std::uint8_t*>(bytes); size > 0;) {
        const ssize_t count = ::write(fd_, next, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        next += count;
        size -= static_cast<std::size_t>(count);
    }
}

void FlashDevice::checkCrc(const char* operation) const
{
    if (osbios_CheckCRC(fd_, 0, 0) < 0)
        cli_printf("%s: CRC error.\r\n", operation);
}

void FlashDevice::setCrc(const char* operation, const FlashImage* image) const
{
    if (osbios_SetCrc(fd_, image) < 0)
        cli_printf("%s: SetCRC error.\r\n", operation);
}

void FlashDevice::erase() const
{
    erase_info_user block{.start = 0, .length = kEraseBlockSize};
    for (; block.start < sizeof(FlashImage); block.start += block.length) {
        ioctl(fd_, MEMUNLOCK, &block);
        ioctl(fd_, MEMERASE, &block);
    }
}
