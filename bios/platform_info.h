// The factory record in the "bios" flash partition.
//
// Every operation finds and opens the partition. It returns 0, or -1 if the partition or an input file cannot be
// opened. If the checksum does not match or cannot be stored, the operation prints a message and does not fail.

#ifndef BIOS_PLATFORM_INFO_H
#define BIOS_PLATFORM_INFO_H

#include <cstddef>
#include <cstdint>

#include "platform/flash_layout.h"

/// The factory record in the memory of this process. All bytes are zero when the program starts.
extern PlatformInfo platformInfo;

/// Unlocks and erases both erase blocks. Always returns 0.
int biosErase();

/// Prints the whole partition in hexadecimal. If it cannot be read, prints zeros. Always returns 0.
int biosDumpRawInfo();

/// Writes a whole image that holds `info` and is zero elsewhere. The MAC address is written as 6 raw bytes.
int biosFlushPlatformInfo(const PlatformInfo& info);

/// Fills the process's record with the built-in defaults and flushes it.
int biosSetDefaultRecord();

/// Writes the first 262144 bytes of the device file `path` to the partition. Returns -1 and changes nothing if the file
/// is shorter or cannot be read.
int biosSaveToFlash(const char* path);

/// Writes the factory's ROM file to the partition.
int biosSaveDefaultRom();

/// Size of the buffer for the path of a ROM file: "/tmp/" and the longest name that fits in a command line.
inline constexpr std::size_t kRomPathSize = 1024;

/// Composes the device path of the ROM file `name` below "/tmp". Prints a message and returns false if the name leads
/// out of "/tmp", begins with '-', or has characters other than letters, digits and "._-/".
bool biosRomFilePath(char (&path)[kRomPathSize], const char* name);

/// Writes the ROM file `name` in "/tmp" to the partition. Returns -1 if the name is refused.
int biosSaveRomFile(const char* name);

/// Parses 12 hexadecimal digits. Returns -1 and leaves `mac` unchanged if a character is no digit.
int biosHexToMac(const char (&digits)[kMacDigits], std::uint8_t (&mac)[kMacSize]);

/// Reads the MAC address if it is stored as text. Otherwise leaves `mac` unchanged.
int biosGetOemMac(std::uint8_t (&mac)[kMacSize]);

/// Reads the part number, 9 characters and a terminator.
int biosGetPn(char (&text)[10]);

/// Reads the OEM serial number, terminated, into 17 bytes.
int biosGetOemSn(char (&text)[17]);

/// Reads the letter of the region code.
int biosGetRegCode(char& letter);

/// Writes the first 12 hexadecimal digits of `text`; ignores other characters. Prints a message and returns -1 if there
/// are fewer digits.
int biosSetMac(const char* text);

/// Copies `text`, truncated to 16 characters, into the field of the process's record, and writes the field's first 16
/// bytes to the partition.
int biosSetOemSn(const char* text);
int biosSetQlnSn(const char* text);

#endif
