#include "bios/platform_info.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <unistd.h>

#include "base/file.h"
#include "base/product.h"
#include "base/text.h"
#include "bios/flash_device.h"
#include "shell/output.h"

namespace
{

/// The part number begins in the middle of the platform name's slot and ends in the slot after it.
constexpr std::size_t kPartNumberOffset = offsetof(FlashImage, platformName) + 8;
constexpr std::size_t kPartNumberLength = 9;

/// The region letter follows the text "Regcode:" in its slot.
constexpr std::size_t kRegionLetterOffset = offsetof(FlashImage, regionCode) + 8;

constexpr char kRomNameCharacters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-/";

constexpr std::size_t kDumpLineBytes = 50;
constexpr std::size_t kDumpByteWidth = 3;

/// Copies `text`, truncated to the field, and a terminator. The bytes after the terminator are unchanged.
void setField(char (&field)[kFlashSlotSize + 1], const char* text)
{
    const std::size_t length = strnlen(text, kFlashSlotSize);
    std::memcpy(field, text, length);
    field[length] = '\0';
}

void fillSlot(char (&slot)[kFlashSlotSize], const char (&field)[kFlashSlotSize + 1])
{
    std::memcpy(slot, field, strnlen(field, kFlashSlotSize));
}

/// An image on the heap, filled with zeros. get() is null if there is no memory.
class ImageBuffer
{
public:
    ImageBuffer() : image_(static_cast<FlashImage*>(std::calloc(1, sizeof(FlashImage)))) {}
    ~ImageBuffer() { std::free(image_); }
    ImageBuffer(const ImageBuffer&) = delete;
    ImageBuffer& operator=(const ImageBuffer&) = delete;

    [[nodiscard]] FlashImage* get() const { return image_; }

private:
    FlashImage* image_;
};

void printCrcError(const char* operation)
{
    cli_printf("%s: CRC error.\r\n", operation);
}

void updateChecksum(const FlashDevice& device, const char* operation, const FlashImage* image)
{
    if (!device.storeCrc(image))
        cli_printf("%s: SetCRC error.\r\n", operation);
}

void writeImage(const FlashDevice& device, const char* operation, const FlashImage& image)
{
    device.write(0, &image, sizeof image);
    updateChecksum(device, operation, &image);
}

/// Reads one field and checks the checksum of the partition.
int readField(const char* operation, std::size_t offset, char* text, std::size_t size)
{
    const FlashDevice device(FlashDevice::Access::kRead);
    if (!device.isOpen())
        return -1;
    device.read(offset, text, size);
    if (!device.crcMatches())
        printCrcError(operation);
    return 0;
}

/// Writes one field and stores the checksum of the partition.
int writeField(const FlashDevice& device, const char* operation, std::size_t offset, const char* text, std::size_t size)
{
    if (!device.isOpen())
        return -1;
    device.write(offset, text, size);
    updateChecksum(device, operation, nullptr);
    return 0;
}

/// A line ends after each byte whose index is divisible by 50, so the first line has only one byte. The format is
/// fixed, so that scripts can rely on it.
void printDump(const FlashImage& image)
{
    const GatheredOutput gathered;
    char line[kDumpLineBytes * kDumpByteWidth + sizeof "\n"];
    char* end = line;
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&image);
    for (std::size_t i = 0; i < sizeof image; ++i) {
        *end++ = ' ';
        end = putHex(end, bytes[i]);
        if (i % kDumpLineBytes != 0)
            continue;
        *end++ = '\n';
        *end = '\0';
        cli_print(line);
        end = line;
    }
    *end = '\0';
    cli_print(line);
}

} // namespace

constinit PlatformInfo platformInfo{};

int biosErase()
{
    FlashDevice(FlashDevice::Access::kReadWrite).erase();
    return 0;
}

int biosDumpRawInfo()
{
    FlashDevice device(FlashDevice::Access::kRead);
    FlashImage image{};
    device.read(0, &image, sizeof image);
    // Release the lock while the dump is printed, because the terminal may be slow.
    device.unlock();
    printDump(image);
    device.lock();
    if (!device.crcMatches())
        printCrcError("biosDumpRawInfo");
    return 0;
}

int biosFlushPlatformInfo(const PlatformInfo& info)
{
    const FlashDevice device(FlashDevice::Access::kReadWrite);
    if (!device.isOpen())
        return -1;
    const ImageBuffer buffer;
    FlashImage* const image = buffer.get();
    if (image == nullptr)
        return -1;
    fillSlot(image->platformName, info.platformName);
    fillSlot(image->regionCode, info.regionCode);
    fillSlot(image->biosVersion, info.biosVersion);
    fillSlot(image->oemSn, info.oemSn);
    fillSlot(image->qlnSn, info.qlnSn);
    std::memcpy(image->mac, info.mac, sizeof info.mac);
    writeImage(device, "biosFlushPlatformInfo", *image);
    return 0;
}

int biosSetDefaultRecord()
{
    setField(platformInfo.platformName, kDefaultPlatformName);
    setField(platformInfo.regionCode, kDefaultRegionCode);
    setField(platformInfo.biosVersion, kDefaultBiosVersion);
    setField(platformInfo.oemSn, kDefaultOemSn);
    setField(platformInfo.qlnSn, kDefaultQlnSn);
    std::memcpy(platformInfo.mac, kDefaultMac, sizeof kDefaultMac);
    return biosFlushPlatformInfo(platformInfo);
}

int biosSaveToFlash(const char* path)
{
    const int rom = openPlainFile(path);
    if (rom < 0)
        return -1;
    const ImageBuffer buffer;
    FlashImage* const image = buffer.get();
    const bool complete = image != nullptr && readAll(rom, image, sizeof *image) == sizeof *image;
    close(rom);
    if (!complete)
        return -1;
    const FlashDevice device(FlashDevice::Access::kReadWrite);
    if (!device.isOpen())
        return -1;
    writeImage(device, "biosSaveToFlash", *image);
    return 0;
}

int biosSaveDefaultRom()
{
    return biosSaveToFlash(kDefaultRomFile);
}

bool biosRomFilePath(char (&path)[kRomPathSize], const char* name)
{
    std::snprintf(path, sizeof path, "/tmp/%s", name);
    const bool leavesFolder = std::strstr(path, "/../") != nullptr || std::string_view(path).ends_with("/..");
    if (*name != '-' && name[std::strspn(name, kRomNameCharacters)] == '\0' && !leavesFolder)
        return true;
    cli_printf("    Error: Invalid file name '%s'.\n", name);
    return false;
}

int biosSaveRomFile(const char* name)
{
    char path[kRomPathSize];
    return biosRomFilePath(path, name) ? biosSaveToFlash(path) : -1;
}

int biosHexToMac(const char (&digits)[kMacDigits], std::uint8_t (&mac)[kMacSize])
{
    std::uint8_t converted[kMacSize]{};
    for (std::size_t i = 0; i < kMacDigits; ++i) {
        const int value = hexValue(digits[i]);
        if (value < 0)
            return -1;
        converted[i / 2] = static_cast<std::uint8_t>(converted[i / 2] << 4 | value);
    }
    std::memcpy(mac, converted, sizeof converted);
    return 0;
}

int biosGetOemMac(std::uint8_t (&mac)[kMacSize])
{
    char digits[kMacDigits]{};
    if (readField("biosGetOemMac", offsetof(FlashImage, mac), digits, sizeof digits) != 0)
        return -1;
    biosHexToMac(digits, mac);
    return 0;
}

int biosGetPn(char (&text)[10])
{
    std::memset(text, 0, sizeof text);
    return readField("biosGetPn", kPartNumberOffset, text, kPartNumberLength);
}

int biosGetOemSn(char (&text)[17])
{
    std::memset(text, 0, sizeof text);
    return readField("biosGetOemSn", offsetof(FlashImage, oemSn), text, kFlashSlotSize);
}

int biosGetRegCode(char& letter)
{
    const FlashDevice device(FlashDevice::Access::kRead);
    if (!device.isOpen())
        return -1;
    device.read(kRegionLetterOffset, &letter, sizeof letter);
    return 0;
}

int biosSetMac(const char* text)
{
    const FlashDevice device(FlashDevice::Access::kReadWrite);
    char digits[kMacDigits];
    std::size_t count = 0;
    for (; *text != '\0' && count < kMacDigits; ++text)
        if (hexValue(*text) >= 0)
            digits[count++] = *text;
    if (count < kMacDigits) {
        cli_printf(" [Error - %s]: Invalid Mac Address length (%d)\n", "biosSetMac", static_cast<int>(count));
        return -1;
    }
    return writeField(device, "biosSetMac", offsetof(FlashImage, mac), digits, sizeof digits);
}

int biosSetOemSn(const char* text)
{
    setField(platformInfo.oemSn, text);
    const FlashDevice device(FlashDevice::Access::kReadWrite);
    return writeField(device, "biosSetOemSn", offsetof(FlashImage, oemSn), platformInfo.oemSn, kFlashSlotSize);
}

int biosSetQlnSn(const char* text)
{
    setField(platformInfo.qlnSn, text);
    const FlashDevice device(FlashDevice::Access::kReadWrite);
    return writeField(device, "biosSetQlnSn", offsetof(FlashImage, qlnSn), platformInfo.qlnSn, kFlashSlotSize);
}
