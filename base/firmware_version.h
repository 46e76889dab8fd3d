// The version of the firmware that this shell is part of.

#ifndef BASE_FIRMWARE_VERSION_H
#define BASE_FIRMWARE_VERSION_H

inline constexpr char kFirmwareMajor[] = "5";
inline constexpr char kFirmwareMinor[] = "04";
inline constexpr char kFirmwareBuild[] = "0241";

#endif
