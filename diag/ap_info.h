// `get wtp info`: the access point's state as the CAPWAP daemon sees it.

#ifndef DIAG_AP_INFO_H
#define DIAG_AP_INFO_H

#include <cstddef>
#include <cstdint>
#include <span>

// Multi-byte fields are in host byte order; an IPv4 address has its first octet in the most significant byte. A text
// ends at its first zero or at the end of its field.

/// Where a LAN port's MAC address and its first split-tunnel address share a byte.
union LanPortAddresses {
    std::uint8_t mac[6];
    struct [[gnu::packed]] {
        std::uint8_t macHead[5];
        std::uint32_t first;
    } splitTunnel;
};

struct [[gnu::packed]] LanPort {
    static constexpr std::uint8_t kLocalSwitching = 1U << 0;
    static constexpr std::uint8_t kLocalBridging = 1U << 1;
    static constexpr std::uint8_t kMesh = 1U << 4;
    static constexpr std::uint8_t kSt = 1U << 5;
    static constexpr std::uint8_t kSplitTunnel = 1U << 6;

    std::uint8_t mode; ///< 0 offline, 1 NAT to WAN, 2 bridged to WAN, 3 bridged to an SSID
    std::uint8_t secondNumber;
    std::uint8_t flags;
    std::uint8_t reserved3;
    std::uint16_t vlanTag;
    char ssid[33];
    LanPortAddresses addresses;
    std::uint32_t splitTunnelSecond;
};

static_assert(offsetof(LanPort, mode) == 0);
static_assert(offsetof(LanPort, secondNumber) == 1);
static_assert(offsetof(LanPort, flags) == 2);
static_assert(offsetof(LanPort, vlanTag) == 4);
static_assert(offsetof(LanPort, ssid) == 6);
static_assert(offsetof(LanPort, addresses.mac) == 39);
static_assert(offsetof(LanPort, addresses.splitTunnel.first) == 44);
static_assert(offsetof(LanPort, splitTunnelSecond) == 48);
static_assert(sizeof(LanPort) == 52);

/// The record but for its LAN ports, which the fields from `apMode` on overlap when there are more than eight.
struct [[gnu::packed]] ApInfo {
    static constexpr std::size_t kLanPortOffset = 348;

    std::uint8_t reserved0[4];
    std::uint8_t radioCount;
    std::uint8_t reserved5;
    std::uint16_t echoInterval;
    std::uint16_t discoveryInterval;
    std::uint16_t reportInterval;
    std::uint16_t idleTimeout;
    std::uint16_t statisticsInterval;
    std::uint16_t stationStatisticsInterval;
    std::uint16_t vapStatisticsInterval;
    std::uint16_t radioStatisticsInterval;
    std::uint16_t stationCapabilityInterval;
    std::uint16_t managementVlan;
    char name[36];
    char location[36];
    std::uint8_t downloading; ///< non-zero: an image download is under way
    std::uint8_t reserved99;
    std::uint32_t imageReceived;
    std::uint32_t imageTotal;
    std::int32_t retryCount;
    std::uint32_t connectTime; ///< seconds since 1970, UTC
    char retryReason[64];
    char state[36];
    std::uint32_t apAddress;
    std::uint32_t acAddress;
    std::uint8_t reserved224[64];
    std::uint16_t acPorts[2];
    std::int32_t bulkSequence;
    std::uint8_t dataSecurity; ///< 2: clear text; any other value: DTLS; bit 2: DTLS details follow
    std::uint8_t dtlsInKernel;
    char dtlsCipher[36];
    std::uint8_t baseMac[6];
    std::uint8_t reserved340[4];
    std::int32_t lanPortCount;
    LanPort lanPorts[8];
    std::uint8_t apMode; ///< 1 fat, 2 site survey, other: thin
    std::uint8_t reserved765;
    std::uint8_t fragmentPrevention; ///< bit 0: TCP MSS clamping; bit 1: tunnel MTU
    std::uint8_t reserved767;
    std::uint16_t uplinkMtu;
    std::uint16_t downlinkMtu;
};

static_assert(offsetof(ApInfo, radioCount) == 4);
static_assert(offsetof(ApInfo, echoInterval) == 6);
static_assert(offsetof(ApInfo, discoveryInterval) == 8);
static_assert(offsetof(ApInfo, reportInterval) == 10);
static_assert(offsetof(ApInfo, idleTimeout) == 12);
static_assert(offsetof(ApInfo, statisticsInterval) == 14);
static_assert(offsetof(ApInfo, stationStatisticsInterval) == 16);
static_assert(offsetof(ApInfo, vapStatisticsInterval) == 18);
static_assert(offsetof(ApInfo, radioStatisticsInterval) == 20);
static_assert(offsetof(ApInfo, stationCapabilityInterval) == 22);
static_assert(offsetof(ApInfo, managementVlan) == 24);
static_assert(offsetof(ApInfo, name) == 26);
static_assert(offsetof(ApInfo, location) == 62);
static_assert(offsetof(ApInfo, downloading) == 98);
static_assert(offsetof(ApInfo, imageReceived) == 100);
static_assert(offsetof(ApInfo, imageTotal) == 104);
static_assert(offsetof(ApInfo, retryCount) == 108);
static_assert(offsetof(ApInfo, connectTime) == 112);
static_assert(offsetof(ApInfo, retryReason) == 116);
static_assert(offsetof(ApInfo, state) == 180);
static_assert(offsetof(ApInfo, apAddress) == 216);
static_assert(offsetof(ApInfo, acAddress) == 220);
static_assert(offsetof(ApInfo, acPorts) == 288);
static_assert(offsetof(ApInfo, bulkSequence) == 292);
static_assert(offsetof(ApInfo, dataSecurity) == 296);
static_assert(offsetof(ApInfo, dtlsInKernel) == 297);
static_assert(offsetof(ApInfo, dtlsCipher) == 298);
static_assert(offsetof(ApInfo, baseMac) == 334);
static_assert(offsetof(ApInfo, lanPortCount) == 344);
static_assert(offsetof(ApInfo, lanPorts) == ApInfo::kLanPortOffset);
static_assert(offsetof(ApInfo, apMode) == 764);
static_assert(offsetof(ApInfo, fragmentPrevention) == 766);
static_assert(offsetof(ApInfo, uplinkMtu) == 768);
static_assert(offsetof(ApInfo, downlinkMtu) == 770);
static_assert(sizeof(ApInfo) == 772);

/// Shows the reply to the access-point query.
void printApInfo(std::span<const std::uint8_t> reply);

#endif
