// The access point's own record: identity, intervals, state of the link, LAN ports.

#include <algorithm>

#include "platform/simulation/daemon/hardware_address.h"
#include "platform/simulation/daemon/network.h"
#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/daemon/uplink.h"

namespace
{

constexpr uint16_t kRadioStatisticsInterval = 30;

struct PortUse {
    uint8_t mode;
    std::string_view network{}; ///< the interface of the one that the port is bridged to
};

constexpr PortUse kPortUses[] = {
    {LanPort::kNatToWan},
    {LanPort::kBridgedToWan},
    {LanPort::kBridgedToSsid, "wlan0-va1"},
    {LanPort::kBridgedToSsid, "wlan1-va2"},
    {LanPort::kOffline},
};

/// The flags that a port has in common with its network.
constexpr uint8_t kCommonFlags =
    LanPort::kLocalSwitching | LanPort::kLocalBridging | LanPort::kSt | LanPort::kSplitTunnel;
static_assert((VapRecord::kLocalSwitching | VapRecord::kLocalBridging | VapRecord::kStandalone |
               VapRecord::kSplitTunnel) == kCommonFlags);

constexpr uint32_t kSplitTunnels[] = {0x0a141e00, 0xac101f01};

LanPort bridgedPort(const Network& network)
{
    const HardwareAddress mac = interfaceAddress(network.interface());
    LanPort port{};
    port.mode = LanPort::kBridgedToSsid;
    port.secondNumber = static_cast<uint8_t>(network.number + 1);
    port.flags = static_cast<uint8_t>((network.flags() & kCommonFlags) | network.meshBackhaul * LanPort::kMesh);
    port.vlanTag = network.vlan;
    fillText(port.ssid, network.ssid());
    // The last octet of the first address is also that of the hardware address.
    port.addresses.splitTunnel.first = kSplitTunnels[0];
    port.splitTunnelSecond = kSplitTunnels[1];
    std::ranges::copy(mac, port.addresses.mac);
    return port;
}

LanPort lanPort(const PortUse& use)
{
    for (const Network& network : networks())
        if (network.interface() == use.network)
            return bridgedPort(network);
    LanPort port{};
    port.mode = use.network.empty() ? use.mode : LanPort::kOffline;
    return port;
}

/// The least secure way that the configuration allows.
uint8_t securityCode(const WtpConfig& config)
{
    constexpr uint8_t kIpsec = 1U << 3;
    const auto allows = [&config](const char* way) {
        return config.dataChannelSecurity.find(way) != std::string::npos;
    };
    if (allows("clear"))
        return ApInfo::kClearText;
    return allows("dtls") ? ApInfo::kDtlsDetails : kIpsec;
}

} // namespace

Bytes accessPointReply(const WtpConfig& config, const ControllerLink::Status& link)
{
    ApInfo info{};
    info.radioCount = 2;
    info.echoInterval = config.echoInterval;
    info.discoveryInterval = config.discoveryInterval;
    info.reportInterval = config.reportInterval;
    info.idleTimeout = config.idleTimeout;
    info.statisticsInterval = config.statisticsTimer;
    info.stationStatisticsInterval = config.stationStatisticsInterval;
    info.vapStatisticsInterval = config.vapStatisticsInterval;
    info.radioStatisticsInterval = kRadioStatisticsInterval;
    info.stationCapabilityInterval = config.stationCapabilityInterval;
    info.managementVlan = config.managementVlan;
    info.retryCount = link.retries;
    info.connectTime = static_cast<uint32_t>(link.connectTime);
    info.apAddress = ownAddress();
    info.acAddress = link.controller;
    info.acPorts[0] = config.controllerPort;
    info.acPorts[1] = static_cast<uint16_t>(config.controllerPort + 1);
    info.dataSecurity = securityCode(config);
    info.lanPortCount = std::size(kPortUses);
    info.fragmentPrevention = ApInfo::kTcpMss | ApInfo::kTunnelMtu;
    info.uplinkMtu = 1500;
    info.downlinkMtu = 1420;
    fillText(info.name, config.name.empty() ? readHostName() : config.name);
    fillText(info.location, config.location);
    fillText(info.retryReason, link.retryReason);
    fillText(info.state, link.state);
    info.dtlsInKernel = info.dataSecurity == ApInfo::kDtlsDetails;
    fillText(info.dtlsCipher, "AES128-SHA");
    std::ranges::copy(baseAddress(), info.baseMac);
    std::ranges::transform(kPortUses, info.lanPorts, lanPort);

    Bytes reply;
    append(reply, info);
    reply.resize(ApInfo::kReplyLength);
    return reply;
}
