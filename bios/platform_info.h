// The factory record in the "bios" flash partition.
//
// Every operation finds and opens the partition afresh. 0: done; -1: the partition, or a file that it is written from,
// does not open. A checksum that does not match or cannot be stored is a message, never a failure.

#ifndef BIOS_PLATFORM_INFO_H
#define BIOS_PLATFORM_INFO_H

#include <cstddef>
#include <cstdint>

#include "platform/flash_layout.h"

/// The process's record, zero at start.
extern PlatformInfo platformInfo;

/// Unlocks and erases both erase blocks. Always 0.
int biosErase();

/// Says the whole partition in hexadecimal, zeros when it cannot be read. Always 0.
int biosDumpRawInfo();

/// Writes a whole image that holds `info` and is zero elsewhere. The MAC address is written as 6 raw bytes.
int biosFlushPlatformInfo(const PlatformInfo& info);

/// Fills the process's record with the built-in defaults and flushes it.
int biosSetDefaultRecord();

/// Writes the first 262144 bytes of the device file `path` as the whole image. A file that is shorter, or that cannot
/// be read, is refused with -1 and changes nothing.
int biosSaveToFlash(const char* path);

/// Saves the factory's ROM file.
int biosSaveDefaultRom();

/// Longer than any name that a line can hold, behind the folder.
inline constexpr std::size_t kRomPathSize = 1024;

/// The device path of the ROM file `name` below "/tmp". A name that leads out of it, that begins like an option, or
/// that has another character than letters, digits and "._-/" is refused with a message: false.
bool biosRomFilePath(char (&path)[kRomPathSize], const char* name);

/// Saves the ROM file `name` from "/tmp"; a refused name is -1.
int biosSaveRomFile(const char* name);

/// Converts 12 hexadecimal digits. A character that is none: -1, and `mac` is left alone.
int biosHexToMac(const char (&digits)[kMacDigits], std::uint8_t (&mac)[kMacSize]);

/// Reads a MAC address that stands in its text form; `mac` is left alone when it does not.
int biosGetOemMac(std::uint8_t (&mac)[kMacSize]);

/// Reads the part number, 9 characters and a terminator.
int biosGetPn(char (&text)[10]);

/// Reads the OEM serial number, terminated, into 17 bytes.
int biosGetOemSn(char (&text)[17]);

/// Reads the region code, one byte without a terminator.
int biosGetRegCode(char& letter);

/// Writes the first 12 hexadecimal digits of `text`, whatever separates them. Fewer are refused with a message and -1.
int biosSetMac(const char* text);

/// Copies `text`, cut to 16 characters, into the process's record and writes that field's first 16 bytes.
int biosSetOemSn(const char* text);
int biosSetQlnSn(const char* text);

#endif
