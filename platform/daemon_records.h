// The messages between the shell and the CAPWAP daemon: their types, and the records of messages and replies.
//
// Fields of several bytes are in host byte order. A list begins with the count of its records, a 32-bit word in
// network byte order. An IPv4 address is a word with the first octet in the most significant byte. A text ends at its
// first zero or at the end of its field.

#ifndef PLATFORM_DAEMON_RECORDS_H
#define PLATFORM_DAEMON_RECORDS_H

#include <cstddef>
#include <cstdint>

/// Queries have a reply, settings have none.
enum MessageType : std::int32_t {
    kQueryVaps = 1,
    kQueryAccessPoint = 2,
    kQueryStations = 3,
    kQueryRadios = 5, ///< the reply is the records alone, without a count
    kSetCountry = 6,
    kSetPower = 7,
};

/// A LAN port's MAC address and its first split-tunnel address share a byte. The byte order of the host decides which
/// octet of the IPv4 address that is.
union LanPortAddresses {
    std::uint8_t mac[6];
    struct [[gnu::packed]] {
        std::uint8_t macHead[5];
        std::uint32_t first;
    } splitTunnel;
};

struct [[gnu::packed]] LanPort {
    static constexpr std::uint8_t kOffline = 0;
    static constexpr std::uint8_t kNatToWan = 1;
    static constexpr std::uint8_t kBridgedToWan = 2;
    static constexpr std::uint8_t kBridgedToSsid = 3;

    static constexpr std::uint8_t kLocalSwitching = 1U << 0;
    static constexpr std::uint8_t kLocalBridging = 1U << 1;
    static constexpr std::uint8_t kMesh = 1U << 4;
    static constexpr std::uint8_t kSt = 1U << 5;
    static constexpr std::uint8_t kSplitTunnel = 1U << 6;

    std::uint8_t mode;
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

/// The access point's record. If `lanPortCount` is above eight, the array of LAN ports continues past `lanPorts`, over
/// the fields from `apMode` on, up to the end of the reply.
struct [[gnu::packed]] ApInfo {
    static constexpr std::size_t kLanPortOffset = 348;
    static constexpr std::size_t kReplyLength = 2992; ///< longest reply, with all LAN ports
    static constexpr std::uint8_t kClearText = 2;
    static constexpr std::uint8_t kDtlsDetails = 1U << 2;
    static constexpr std::uint8_t kTcpMss = 1U << 0;
    static constexpr std::uint8_t kTunnelMtu = 1U << 1;

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
    std::uint8_t dataSecurity; ///< any value but kClearText: DTLS
    std::uint8_t dtlsInKernel;
    char dtlsCipher[36];
    std::uint8_t baseMac[6];
    std::uint8_t reserved340[4];
    std::int32_t lanPortCount;
    LanPort lanPorts[8];
    std::uint8_t apMode; ///< 1 fat, 2 site survey, other: thin
    std::uint8_t reserved765;
    std::uint8_t fragmentPrevention; ///< bits: kTcpMss, kTunnelMtu
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

/// One virtual access point: one SSID on one radio. A list of these records begins with their count.
struct [[gnu::packed]] VapRecord {
    static constexpr std::uint32_t kLocalSwitching = 1U << 0;
    static constexpr std::uint32_t kLocalBridging = 1U << 1;
    static constexpr std::uint32_t kLocalAuthentication = 1U << 3;
    static constexpr std::uint32_t kStandalone = 1U << 5;
    static constexpr std::uint32_t kSplitTunnel = 1U << 6;
    static constexpr std::uint32_t kCaptivePortal = 1U << 8;
    static constexpr int kCapabilityShift = 16;
    static constexpr std::uint32_t kPrivacy = 1U << (kCapabilityShift + 11);

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
    std::uint32_t flags;  ///< its high half is the 802.11 capability field
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
static_assert(offsetof(VapRecord, flags) == 44);
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

/// One associated client. A list of these records begins with their count.
struct [[gnu::packed]] StationRecord {
    std::uint8_t number; ///< shown in the heading
    std::uint8_t type;   ///< 1 station, 2 mesh station, 3 mesh host
    std::uint8_t reserved2[12];
    std::uint8_t radio;
    std::uint8_t reserved15;
    std::uint16_t aid;
    std::uint8_t vap;
    std::uint8_t reserved19;
    std::uint8_t bssid[6];
    std::uint8_t mac[6];
    std::uint8_t reserved32[6];
    std::uint16_t vlan;
    std::uint8_t reserved40[50];
    char ssid[33];
    std::uint8_t reserved123[5];
};

static_assert(offsetof(StationRecord, number) == 0);
static_assert(offsetof(StationRecord, type) == 1);
static_assert(offsetof(StationRecord, radio) == 14);
static_assert(offsetof(StationRecord, aid) == 16);
static_assert(offsetof(StationRecord, vap) == 18);
static_assert(offsetof(StationRecord, bssid) == 20);
static_assert(offsetof(StationRecord, mac) == 26);
static_assert(offsetof(StationRecord, vlan) == 38);
static_assert(offsetof(StationRecord, ssid) == 90);
static_assert(sizeof(StationRecord) == 128);

/// A range of channels that the controller allows.
struct [[gnu::packed]] ChannelRange {
    std::uint16_t reserved0;
    std::uint16_t first; ///< 0 ends the list of ranges
    std::uint16_t count;
    std::uint16_t reserved6;
};

static_assert(offsetof(ChannelRange, first) == 2);
static_assert(offsetof(ChannelRange, count) == 4);
static_assert(sizeof(ChannelRange) == 8);

/// Channel n is bit n mod 8 of byte n div 8, the least significant bit first.
using ChannelMap = std::uint8_t[128];

/// One radio.
struct [[gnu::packed]] RadioRecord {
    static constexpr std::uint8_t kDisabled = 2;

    std::uint8_t id;
    std::uint8_t reserved1;
    std::uint8_t mode; ///< any value but kDisabled: access point
    std::uint8_t reserved3[21];
    ChannelRange acRanges[8];
    std::int32_t acChannelNumber;
    std::int32_t acChannelAge;
    ChannelMap acChannels;
    std::uint8_t reserved224[8];
    std::uint16_t maxDistance; ///< metres
    std::uint8_t reserved234[2];
    std::uint16_t type;
    std::uint8_t is5GHz;
    char configuredCountry[4];
    char operatingCountry[4];
    std::uint8_t reserved247[5];
    std::uint8_t powerSaveOptimisation;
    std::uint8_t protectionMode;
    std::uint8_t coexistence;
    std::uint8_t txPower; ///< per cent
    std::uint8_t reserved256[2];
    std::uint16_t beaconInterval;
    std::uint8_t mcs;
    std::uint8_t shortGuardInterval; ///< 1: enabled
    std::uint8_t width;              ///< 0: 20 MHz, 1: 40 MHz, other: 80 MHz
    std::uint8_t ackTimeout;
    std::uint8_t channelCount;
    std::uint8_t channel;
    std::uint8_t reserved266[6];
    ChannelMap allowedChannels;
    ChannelMap hardwareChannels;
    ChannelMap nonOccupancyChannels; ///< radar was seen there
    std::uint8_t reserved656[1408];
};

static_assert(offsetof(RadioRecord, id) == 0);
static_assert(offsetof(RadioRecord, mode) == 2);
static_assert(offsetof(RadioRecord, acRanges) == 24);
static_assert(offsetof(RadioRecord, acChannelNumber) == 88);
static_assert(offsetof(RadioRecord, acChannelAge) == 92);
static_assert(offsetof(RadioRecord, acChannels) == 96);
static_assert(offsetof(RadioRecord, maxDistance) == 232);
static_assert(offsetof(RadioRecord, type) == 236);
static_assert(offsetof(RadioRecord, is5GHz) == 238);
static_assert(offsetof(RadioRecord, configuredCountry) == 239);
static_assert(offsetof(RadioRecord, operatingCountry) == 243);
static_assert(offsetof(RadioRecord, powerSaveOptimisation) == 252);
static_assert(offsetof(RadioRecord, protectionMode) == 253);
static_assert(offsetof(RadioRecord, coexistence) == 254);
static_assert(offsetof(RadioRecord, txPower) == 255);
static_assert(offsetof(RadioRecord, beaconInterval) == 258);
static_assert(offsetof(RadioRecord, mcs) == 260);
static_assert(offsetof(RadioRecord, shortGuardInterval) == 261);
static_assert(offsetof(RadioRecord, width) == 262);
static_assert(offsetof(RadioRecord, ackTimeout) == 263);
static_assert(offsetof(RadioRecord, channelCount) == 264);
static_assert(offsetof(RadioRecord, channel) == 265);
static_assert(offsetof(RadioRecord, allowedChannels) == 272);
static_assert(offsetof(RadioRecord, hardwareChannels) == 400);
static_assert(offsetof(RadioRecord, nonOccupancyChannels) == 528);
static_assert(sizeof(RadioRecord) == 2064);

struct CountryMessage {
    std::uint8_t zero;
    std::uint8_t unused;
    std::uint16_t code;
    char name[3]; ///< two letters and a zero, or the beginning of a longer name
    char end;
};

static_assert(offsetof(CountryMessage, code) == 2);
static_assert(offsetof(CountryMessage, name) == 4);
static_assert(offsetof(CountryMessage, end) == 7);
static_assert(sizeof(CountryMessage) == 8);

struct PowerMessage {
    std::uint8_t radio;
    std::uint8_t percent; ///< non-zero: the power is in per cent; 0: in dBm
    std::uint16_t power;  ///< the low 16 bits of a signed number
};

static_assert(offsetof(PowerMessage, percent) == 1);
static_assert(offsetof(PowerMessage, power) == 2);
static_assert(sizeof(PowerMessage) == 4);

#endif
