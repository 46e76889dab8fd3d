// `get vap cfg-info`: the virtual access points, one SSID on one radio each.

#ifndef DIAG_VAP_LIST_H
#define DIAG_VAP_LIST_H

#include <cstddef>
#include <cstdint>
#include <span>

/// The 802.11 capability field lies in the last two bytes of the flag word.
union VapFlags {
    std::uint32_t word;
    struct {
        std::uint16_t head;
        std::uint16_t capability;
    } overlap;
};

/// One virtual access point, in host byte order; an IPv4 address has its first octet in the most significant byte. A
/// text ends at its first zero or at the end of its field.
struct [[gnu::packed]] VapRecord {
    static constexpr std::uint32_t kLocalSwitching = 1U << 0;
    static constexpr std::uint32_t kLocalBridging = 1U << 1;
    static constexpr std::uint32_t kLocalAuthentication = 1U << 3;
    static constexpr std::uint32_t kStandalone = 1U << 5;
    static constexpr std::uint32_t kSplitTunnel = 1U << 6;
    static constexpr std::uint32_t kCaptivePortal = 1U << 8;
    static constexpr std::uint16_t kPrivacy = 1U << 11;

    std::uint8_t reserved0[4];
    std::uint32_t handle; ///< the daemon's own pointer
    std::uint8_t radio;
    char interface[16];
    std::uint8_t bssid[6];
    std::uint8_t reserved31;
    std::uint32_t address;
    std::uint32_t netmask;
    std::uint8_t wlan;
    std::uint8_t reserved41;
    std::uint8_t macMode; ///< 0 local, 1 split
    std::uint8_t tunnel;  ///< 0 local, 1 802.3, 2 802.11
    VapFlags flags;
    std::uint8_t keyIndex;
    std::uint8_t keyStatus;
    std::uint16_t keyLength;
    std::uint8_t key[64];
    std::uint8_t transmitCounter[6];
    std::uint8_t accessControlList;
    std::uint8_t qos;
    std::uint8_t staticKey; ///< non-zero: the key is text; 0: the bytes of a WPA key
    char name[33];
    char authentication[36];
    std::uint8_t meshBackhaul;
    std::uint8_t initialised;
    std::uint8_t adminDown;
    std::uint8_t interfaceDown;
    std::uint16_t vlan;
    std::uint8_t probeSuppression;
    std::int8_t probeThreshold; ///< dBm
    std::uint8_t reserved202[7];
    char accountingId[64];
    char authenticationServers[3][64];
    char accountingServers[4][64];
    char portalServer[64];
    std::uint8_t reserved785[1987];
};

static_assert(offsetof(VapRecord, handle) == 4);
static_assert(offsetof(VapRecord, radio) == 8);
static_assert(offsetof(VapRecord, interface) == 9);
static_assert(offsetof(VapRecord, bssid) == 25);
static_assert(offsetof(VapRecord, address) == 32);
static_assert(offsetof(VapRecord, netmask) == 36);
static_assert(offsetof(VapRecord, wlan) == 40);
static_assert(offsetof(VapRecord, macMode) == 42);
static_assert(offsetof(VapRecord, tunnel) == 43);
static_assert(offsetof(VapRecord, flags.word) == 44);
static_assert(offsetof(VapRecord, flags.overlap.capability) == 46);
static_assert(offsetof(VapRecord, keyIndex) == 48);
static_assert(offsetof(VapRecord, keyStatus) == 49);
static_assert(offsetof(VapRecord, keyLength) == 50);
static_assert(offsetof(VapRecord, key) == 52);
static_assert(offsetof(VapRecord, transmitCounter) == 116);
static_assert(offsetof(VapRecord, accessControlList) == 122);
static_assert(offsetof(VapRecord, qos) == 123);
static_assert(offsetof(VapRecord, staticKey) == 124);
static_assert(offsetof(VapRecord, name) == 125);
static_assert(offsetof(VapRecord, authentication) == 158);
static_assert(offsetof(VapRecord, meshBackhaul) == 194);
static_assert(offsetof(VapRecord, initialised) == 195);
static_assert(offsetof(VapRecord, adminDown) == 196);
static_assert(offsetof(VapRecord, interfaceDown) == 197);
static_assert(offsetof(VapRecord, vlan) == 198);
static_assert(offsetof(VapRecord, probeSuppression) == 200);
static_assert(offsetof(VapRecord, probeThreshold) == 201);
static_assert(offsetof(VapRecord, accountingId) == 209);
static_assert(offsetof(VapRecord, authenticationServers) == 273);
static_assert(offsetof(VapRecord, accountingServers) == 465);
static_assert(offsetof(VapRecord, portalServer) == 721);
static_assert(sizeof(VapRecord) == 2772);

/// Shows the reply to the VAP query.
void printVapList(std::span<const std::uint8_t> reply);

#endif
