// The product that this shell is part of: its names, its versions, and the factory record for a device that has none. A
// port to another access point changes these texts.

#ifndef BASE_PRODUCT_H
#define BASE_PRODUCT_H

#include <cstdint>

inline constexpr char kSystemName[] = "Quillon-K91MV";      ///< shown by `get system version`
inline constexpr char kModelPrefix[] = "QK91MV";            ///< written to the first line of "/cfg/cw.conf"
inline constexpr char kDefaultDeviceName[] = "kestrano-ap"; ///< the configuration's default for the CAPWAP name

inline constexpr char kFirmwareMajor[] = "5";
inline constexpr char kFirmwareMinor[] = "04";
inline constexpr char kFirmwareBuild[] = "0241";
inline constexpr char kFirmwarePatch[] = "4";
inline constexpr char kFirmwareDate[] = "220118"; ///< year, month and day of the build

/// The access point sends these values to its controller.
inline constexpr std::uint32_t kVendorId = 12356; ///< IANA private enterprise number
inline constexpr char kHwVer[] = "QWX40R";
inline constexpr char kSwVer[] = "4.00";
inline constexpr char kSwVerSecond[] = "4.06";

/// The factory record that `bios setdefault` writes if this ROM file cannot be read.
inline constexpr char kDefaultRomFile[] = "/etc/rom/QPK310V_default.rom";
inline constexpr std::uint8_t kDefaultMac[] = {0x02, 0x1a, 0x2b, 0x00, 0x01, 0x00};
inline constexpr char kDefaultPlatformName[] = "QK310V";
inline constexpr char kDefaultRegionCode[] = "Regcode:A";
inline constexpr char kDefaultBiosVersion[] = "Ver:05000001";
inline constexpr char kDefaultOemSn[] = "QPK310V4U1600001";
inline constexpr char kDefaultQlnSn[] = "QPK315V4U1600001";

#endif
