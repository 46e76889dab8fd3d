// The layout of the flash partition "bios", and of the record that the system library reads from it.

#ifndef PLATFORM_FLASH_LAYOUT_H
#define PLATFORM_FLASH_LAYOUT_H

#include <cstddef>
#include <cstdint>

inline constexpr std::size_t kFlashSlotSize = 16;
inline constexpr std::size_t kMacSize = 6;
/// Characters of a MAC address in its text form: hexadecimal digits without separators.
inline constexpr std::size_t kMacDigits = 2 * kMacSize;

/// The whole partition. A slot holds ASCII text. A text of less than 16 characters is terminated, one of 16 is not.
struct FlashImage {
    std::uint8_t loader[0x3FF80];
    char mac[kFlashSlotSize];          ///< 12 hexadecimal digits, or 6 raw bytes and 10 zeros
    char qlnSn[kFlashSlotSize];        ///< device serial number
    char platformName[kFlashSlotSize]; ///< the part number begins in its second half
    char regionCode[kFlashSlotSize];   ///< "Regcode:" and the region's letter
    char biosVersion[kFlashSlotSize];
    char reserved[kFlashSlotSize];
    char oemSn[kFlashSlotSize];
    std::uint8_t tail[kFlashSlotSize];
};

static_assert(sizeof(FlashImage) == 0x40000);
static_assert(offsetof(FlashImage, mac) == 0x3FF80);
static_assert(offsetof(FlashImage, qlnSn) == 0x3FF90);
static_assert(offsetof(FlashImage, platformName) == 0x3FFA0);
static_assert(offsetof(FlashImage, regionCode) == 0x3FFB0);
static_assert(offsetof(FlashImage, biosVersion) == 0x3FFC0);
static_assert(offsetof(FlashImage, reserved) == 0x3FFD0);
static_assert(offsetof(FlashImage, oemSn) == 0x3FFE0);
static_assert(offsetof(FlashImage, tail) == 0x3FFF0);

/// The record that get_qln_platform_info() fills. Texts are terminated.
struct PlatformInfo {
    std::uint8_t mac[kMacSize];
    char platformName[kFlashSlotSize + 1];
    char regionCode[kFlashSlotSize + 1];
    char biosVersion[kFlashSlotSize + 1];
    char qlnSn[kFlashSlotSize + 1];
    std::uint8_t unused74[9];
    char oemSn[kFlashSlotSize + 1];
    std::uint8_t unused100[12];
};

static_assert(alignof(PlatformInfo) == 1);
static_assert(sizeof(PlatformInfo) == 112);
static_assert(offsetof(PlatformInfo, mac) == 0);
static_assert(offsetof(PlatformInfo, platformName) == 6);
static_assert(offsetof(PlatformInfo, regionCode) == 23);
static_assert(offsetof(PlatformInfo, biosVersion) == 40);
static_assert(offsetof(PlatformInfo, qlnSn) == 57);
static_assert(offsetof(PlatformInfo, unused74) == 74);
static_assert(offsetof(PlatformInfo, oemSn) == 83);
static_assert(offsetof(PlatformInfo, unused100) == 100);

#endif
