// The factory record in the "bios" flash partition.

#ifndef BIOS_PLATFORM_INFO_H
#define BIOS_PLATFORM_INFO_H

/// Reads the OEM serial number, terminated, into 17 bytes. 0, or -1 when the partition does not open.
int biosGetOemSn(char (&text)[17]);

/// Reads the region code, one byte without a terminator. 0, or -1 when the partition does not open.
int biosGetRegCode(char& letter);

#endif
