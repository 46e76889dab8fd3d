// The access point's own record: identity, intervals, state of the link, LAN ports.

#include <algorithm>

#include "platform/simulation/daemon/addresses.h"
#include "platform/simulation/daemon/network.h"
#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/identity.h"

namespace
{

struct PortUse {
    uint8_t mode;
    const char* network = ""; ///< that the port is bridged to where it exists
};

constexpr PortUse kPortUses[] = {
    {LanPort::kNatToWan}, {LanPort::kBridgedToWan}, {LanPort::kOffline, "wlan0-va1"}, {LanPort::kOffline, "wlan1-va2"},
    {LanPort::kOffline},
};

/// The flags that a port has in common with its network.
constexpr uint8_t kNetworkFlags =
    LanPort::kLocalSwitching | LanPort::kLocalBridging | LanPort::kSt | LanPort::kSplitTunnel;

LanPort lanPort(const PortUse& use)
{
    LanPort port{};
    port.mode = use.mode;
    const auto network = std::ranges::find(networks(), use.network, &Network::interface);
    if (network == networks().end())
        return port;
    port.mode = LanPort::kBridgedToSsid;
    port.secondNumber = static_cast<uint8_t>(network->number + 1);
    port.flags = static_cast<uint8_t>((network->flags() & kNetworkFlags) | network->meshBackhaul * LanPort::kMesh);
    port.vlanTag = network->vlan;
    fillText(port.ssid, network->ssid());
    // The last octet of the first address is also that of the hardware address.
    port.addresses.splitTunnel.first = 0x0a141e00;
    port.splitTunnelSecond = 0xac101f01;
    std::ranges::copy(hardwareAddress(network->interface()), port.addresses.mac);
    return port;
}

/// The least secure of the ways that the configuration allows.
uint8_t securityCode(const std::string& ways)
{
    if (ways.find("clear") != std::string::npos)
        return ApInfo::kClearText;
    return ways.find("dtls") != std::string::npos ? ApInfo::kDtlsDetails : 0;
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
    info.radioStatisticsInterval = 30;
    info.stationCapabilityInterval = config.stationCapabilityInterval;
    info.managementVlan = config.managementVlan;
    info.retryCount = link.retries;
    info.connectTime = static_cast<uint32_t>(link.connectTime);
    info.apAddress = ownAddress();
    info.acAddress = link.controller;
    info.acPorts[0] = config.controllerPort;
    info.acPorts[1] = static_cast<uint16_t>(config.controllerPort + 1);
    info.dataSecurity = securityCode(config.dataChannelSecurity);
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
    std::ranges::copy(simIdentity().mac, info.baseMac);
    std::ranges::transform(kPortUses, info.lanPorts, lanPort);

    Bytes reply;
    append(reply, info);
    reply.resize(ApInfo::kReplyLength);
    return reply;
}
