// The access point's own record: identity, intervals, state of the link, LAN ports.

#include "platform/simulation/daemon/hardware_address.h"
#include "platform/simulation/daemon/replies.h"

namespace
{

constexpr std::size_t kRecordSize = 2992;
constexpr std::size_t kPorts = 348;
constexpr std::size_t kPortSize = 52;

/// The address that the network gave to an access point without a static one.
constexpr uint32_t kLeasedAddress = 0xc0a80139;

constexpr uint16_t kRadioStatisticsInterval = 30;
constexpr unsigned kClearText = 2;
constexpr unsigned kDtls = 4;

enum PortMode : uint8_t { kOffline, kNatToWan, kBridgedToWan, kBridgedToSsid };

constexpr uint8_t kLocalSwitching = 1U << 0;
constexpr uint8_t kLocalBridging = 1U << 1;
constexpr uint8_t kMesh = 1U << 4;
constexpr uint8_t kStation = 1U << 5;
constexpr uint8_t kSplitTunnel = 1U << 6;

struct LanPort {
    PortMode mode;
    uint8_t secondPort;
    uint8_t flags;
    uint16_t vlan;
    const char* ssid;
    uint32_t splitAddresses[2]; ///< the last octet of the first is also that of the port's hardware address
};

constexpr LanPort kLanPorts[] = {
    {kNatToWan, 0, 0, 0, "", {}},
    {kBridgedToWan, 0, 0, 0, "", {}},
    {kBridgedToSsid, 2, kStation | kLocalSwitching | kLocalBridging | kMesh, 0x0014, "guest", {0x00000043, 0}},
    {kBridgedToSsid, 3, kSplitTunnel, 0x001e, "branch", {0x0a141e44, 0xac101f01}},
    {kOffline, 0, 0, 0, "", {}},
};

void putPort(RecordWriter& record, std::size_t offset, const LanPort& port)
{
    record.put8(offset, port.mode);
    record.put8(offset + 1, port.secondPort);
    record.put8(offset + 2, port.flags);
    record.put16(offset + 4, port.vlan);
    record.putText(offset + 6, 33, port.ssid);
    record.putBytes(offset + 39, baseAddress());
    record.put32(offset + 44, port.splitAddresses[0]);
    record.put32(offset + 48, port.splitAddresses[1]);
}

unsigned securityCode(const WtpConfig& config)
{
    return config.dataChannelSecurity.find("clear") != std::string::npos ? kClearText : kDtls;
}

} // namespace

Bytes accessPointReply(const WtpConfig& config, const ControllerLink::Status& link)
{
    Bytes reply;
    RecordWriter record(reply, kRecordSize);
    record.put8(4, 2);
    record.put16(6, config.echoInterval);
    record.put16(8, config.discoveryInterval);
    record.put16(10, config.reportInterval);
    record.put16(12, config.idleTimeout);
    record.put16(14, config.statisticsTimer);
    record.put16(16, config.stationStatisticsInterval);
    record.put16(18, config.vapStatisticsInterval);
    record.put16(20, kRadioStatisticsInterval);
    record.put16(22, config.stationCapabilityInterval);
    record.put16(24, config.managementVlan);
    record.putText(26, 36, config.name.empty() ? readHostName() : config.name);
    record.putText(62, 36, config.location);

    record.put32(108, static_cast<uint32_t>(link.retries));
    record.put32(112, static_cast<uint32_t>(link.connectTime));
    record.putText(116, 64, link.retryReason);
    record.putText(180, 36, link.state);
    record.put32(216, config.usesDhcp ? kLeasedAddress : config.staticAddress);
    record.put32(220, link.controller);
    record.put16(288, config.controllerPort);
    record.put16(290, config.controllerPort + 1U);
    record.put8(296, securityCode(config));
    record.putText(298, 36, "AES128-SHA");
    record.putBytes(334, baseAddress());

    record.put32(344, static_cast<uint32_t>(std::size(kLanPorts)));
    for (std::size_t i = 0; i < std::size(kLanPorts); ++i)
        putPort(record, kPorts + i * kPortSize, kLanPorts[i]);
    record.put8(766, 3);
    record.put16(768, 1500);
    record.put16(770, 1420);
    return reply;
}
