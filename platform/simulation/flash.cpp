// The simulated flash. The file "/dev/mtdblock0" holds the image of the partition, which make_flash creates. Its last
// four bytes are a CRC-32 of all bytes before them, least significant byte first. "/dev/mtd0", the character device, is
// an empty file that only accepts requests. The 0 in both names is the number of the partition in
// "/proc/mtd".

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <endian.h>
#include <fcntl.h>
#include <mtd/mtd-user.h>
#include <span>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/flash.h"
#include "platform/system_library.h"

namespace
{

constexpr char kFactoryRom[] = "/etc/rom/QPK310V_default.rom";

constexpr std::size_t kCrcOffset = sizeof(FlashImage) - sizeof(std::uint32_t);

constexpr auto kCrcTable = [] {
    constexpr std::uint32_t kPolynomial = 0xEDB88320;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1) != 0 ? kPolynomial : 0);
        table[i] = value;
    }
    return table;
}();

/// The checksum in the byte order of the flash.
std::uint32_t crcOf(const FlashImage& image)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&image);
    std::uint32_t crc = 0xFFFFFFFF;
    for (std::size_t i = 0; i < kCrcOffset; ++i)
        crc = (crc >> 8) ^ kCrcTable[(crc ^ bytes[i]) & 0xFF];
    return htole32(~crc);
}

/// Reads the image from `offset` to its end. Returns false if the file is shorter.
bool readImage(int fd, FlashImage& image, std::size_t offset = 0)
{
    const std::size_t size = sizeof image - offset;
    auto* const bytes = reinterpret_cast<std::uint8_t*>(&image) + offset;
    return pread(fd, bytes, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
}

void readSlot(char (&field)[kFlashSlotSize + 1], const char (&slot)[kFlashSlotSize])
{
    std::memcpy(field, slot, kFlashSlotSize);
    field[kFlashSlotSize] = '\0';
}

/// Reads a MAC address that is stored as 12 hexadecimal digits or as 6 raw bytes. Zeros follow the raw bytes, so the
/// two forms cannot be confused.
void readMac(std::uint8_t (&mac)[kMacSize], const char (&slot)[kFlashSlotSize])
{
    char digits[kMacDigits + 1]{};
    std::memcpy(digits, slot, kMacDigits);
    if (std::strspn(digits, "0123456789abcdefABCDEF") == kMacDigits)
        std::sscanf(digits, "%2hhx%2hhx%2hhx%2hhx%2hhx%2hhx", &mac[0], &mac[1], &mac[2], &mac[3], &mac[4], &mac[5]);
    else
        std::memcpy(mac, slot, kMacSize);
}

/// A device file whose name ends with the number of the partition.
class PartitionFile
{
public:
    explicit PartitionFile(const char* name)
    {
        FILE* partitions = std::fopen(DeviceFile("/proc/mtd").path(), "re");
        if (partitions == nullptr)
            return;
        char line[128];
        int number = 0;
        while (path_[0] == '\0' && std::fgets(line, sizeof line, partitions) != nullptr)
            if (std::sscanf(line, "mtd%d:", &number) == 1 && std::strstr(line, "bios") != nullptr)
                std::snprintf(path_, sizeof path_, "%s%d", name, number);
        std::fclose(partitions);
    }

    [[nodiscard]] DeviceFile file() const { return DeviceFile(path_); }

private:
    char path_[32]{};
};

int openPartition(int flags)
{
    const int fd = open(PartitionFile("/dev/mtdblock/").file().path(), flags | O_CLOEXEC);
    return fd >= 0 ? fd : open(PartitionFile("/dev/mtdblock").file().path(), flags | O_CLOEXEC);
}

/// Reads the record of the image in the file `fd`, and closes the file. Returns false if the image is too short or `fd`
/// is negative.
bool readRecord(int fd, PlatformInfo& info)
{
    if (fd < 0)
        return false;
    // Wait at most five seconds for a process that writes a whole image.
    for (int tries = 0; tries < 500 && flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK; ++tries)
        usleep(10'000);
    FlashImage image;
    const bool complete = readImage(fd, image, offsetof(FlashImage, mac));
    close(fd);
    if (!complete)
        return false;
    readMac(info.mac, image.mac);
    readSlot(info.platformName, image.platformName);
    readSlot(info.regionCode, image.regionCode);
    readSlot(info.biosVersion, image.biosVersion);
    readSlot(info.qlnSn, image.qlnSn);
    readSlot(info.oemSn, image.oemSn);
    return true;
}

/// Whether the first six bytes of the field hold no value. The bytes of erased flash are 0xFF, and the bytes of a
/// record that could not be read are 0.
template <typename Byte, std::size_t Size>
bool isBlank(const Byte (&field)[Size])
{
    return std::ranges::all_of(std::span(field).first(kMacSize),
                               [](Byte byte) { return byte == 0 || static_cast<std::uint8_t>(byte) == 0xFF; });
}

/// The block that may be erased. Flash is locked until a request unlocks it.
constinit erase_info_user unlockedBlock{};

int refuse(int error)
{
    errno = error;
    return -1;
}

/// Whether this is the simulated character device. On a board it is a device of the kernel.
bool isSimulatedCharacterDevice(int fd)
{
    struct stat opened;
    struct stat node;
    return fstat(fd, &opened) == 0 && S_ISREG(opened.st_mode) &&
           stat(PartitionFile("/dev/mtd").file().path(), &node) == 0 && opened.st_dev == node.st_dev &&
           opened.st_ino == node.st_ino;
}

int eraseBlock(const erase_info_user& block)
{
    if (block.start != unlockedBlock.start || block.length != unlockedBlock.length)
        return refuse(EROFS);
    std::uint8_t erased[4096];
    std::memset(erased, 0xFF, sizeof erased);
    if (block.length % sizeof erased != 0 || block.start + block.length > sizeof(FlashImage))
        return refuse(EINVAL);
    const int fd = openPartition(O_WRONLY);
    std::uint32_t done = 0;
    while (done < block.length &&
           pwrite(fd, erased, sizeof erased, block.start + done) == static_cast<ssize_t>(sizeof erased))
        done += sizeof erased;
    if (fd >= 0)
        close(fd);
    return done == block.length ? 0 : -1;
}

} // namespace

int osbios_CheckCRC(int fd, int, int)
{
    FlashImage image;
    std::uint32_t stored = 0;
    if (!readImage(fd, image))
        return -1;
    std::memcpy(&stored, image.tail + sizeof image.tail - sizeof stored, sizeof stored);
    return stored == crcOf(image) ? 0 : -1;
}

int osbios_SetCrc(int fd, const void* image)
{
    FlashImage partition;
    if (image == nullptr && !readImage(fd, partition))
        return -1;
    const std::uint32_t crc = crcOf(image != nullptr ? *static_cast<const FlashImage*>(image) : partition);
    std::uint32_t stored = 0;
    if (pread(fd, &stored, sizeof stored, kCrcOffset) == static_cast<ssize_t>(sizeof stored) && stored == crc)
        return 0;
    return pwrite(fd, &crc, sizeof crc, kCrcOffset) == static_cast<ssize_t>(sizeof crc) ? 0 : -1;
}

int get_qln_platform_info(void* platform_info)
{
    return readRecord(openPartition(O_RDONLY), *static_cast<PlatformInfo*>(platform_info)) ? 0 : -1;
}

PlatformInfo simIdentity()
{
    PlatformInfo info{};
    PlatformInfo factory{};
    readRecord(openPartition(O_RDONLY), info);
    readRecord(open(DeviceFile(kFactoryRom).path(), O_RDONLY | O_CLOEXEC), factory);
    if (isBlank(info.mac))
        std::ranges::copy(factory.mac, info.mac);
    if (isBlank(info.qlnSn))
        std::ranges::copy(factory.qlnSn, info.qlnSn);
    return info;
}

extern "C" {

/// Replaces ioctl() in the whole program, to answer the flash requests on the simulated character device.
int __wrap_ioctl(int fd, unsigned long request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if ((request != MEMUNLOCK && request != MEMERASE) || !isSimulatedCharacterDevice(fd)) {
        const auto result = static_cast<int>(syscall(SYS_ioctl, fd, request, argument));
        // User-mode emulators return ENOSYS for requests that they do not know.
        return result < 0 && errno == ENOSYS ? refuse(ENOTTY) : result;
    }
    const auto& block = *static_cast<const erase_info_user*>(argument);
    if (request == MEMERASE)
        return eraseBlock(block);
    unlockedBlock = block;
    return 0;
}

/// The name by which programs call ioctl() in a C library that has changed `time_t` from 32 to 64 bits.
[[gnu::alias("__wrap_ioctl")]] int __wrap___ioctl_time64(int fd, unsigned long request, ...);
}
