// A device with a flash partition, and images made without the code under test.

#ifndef TESTS_BIOS_FLASH_FIXTURE_H
#define TESTS_BIOS_FLASH_FIXTURE_H

#include <cstdint>
#include <string>

#include "bios/platform_info.h"
#include "tests/support/device.h"

inline constexpr std::size_t kImageSize = 0x40000;

/// Where the simulated flash keeps its checksum.
inline constexpr std::size_t kChecksumOffset = kImageSize - 4;

/// The image with its checksum brought up to date.
inline std::string sealed(std::string image)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (std::size_t i = 0; i < kChecksumOffset; ++i) {
        crc ^= static_cast<std::uint8_t>(image[i]);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    for (int i = 0; i < 4; ++i)
        image[kChecksumOffset + static_cast<std::size_t>(i)] = static_cast<char>(~crc >> 8 * i);
    return image;
}

/// The image with `bytes` put at `offset`; the checksum is left alone.
inline std::string patched(std::string image, std::size_t offset, const std::string& bytes)
{
    return image.replace(offset, bytes.size(), bytes);
}

/// Bytes that differ everywhere, sealed.
inline std::string noisyImage(std::uint32_t seed = 1)
{
    std::string image(kImageSize, '\0');
    for (char& byte : image) {
        seed = seed * 1664525 + 1013904223;
        byte = static_cast<char>(seed >> 24);
    }
    return sealed(image);
}

class FlashTest : public DeviceTest
{
protected:
    FlashTest()
    {
        platformInfo = {};
        writeFile("/proc/mtd", "dev:    size   erasesize  name\nmtd0: 00040000 00020000 \"bios\"\n");
        writeFile(kPartition, image_);
        writeFile("/dev/mtd0", "");
    }

    [[nodiscard]] std::string partition() const { return readFile(kPartition); }

    static constexpr char kPartition[] = "/dev/mtdblock0";
    const std::string image_ = noisyImage();
};

#endif
