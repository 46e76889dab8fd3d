#include "platform/simulation/daemon/ap_info.h"

#include <algorithm>

#include "platform/simulation/daemon/addresses.h"
#include "platform/simulation/daemon/network.h"
#include "platform/simulation/flash.h"
#include "platform/simulation/interface_state.h"

namespace
{

struct PortUse {
    uint8_t mode;
    const char* network = ""; ///< the network to which the port is bridged, if that network exists
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
    // On a little-endian host the last octet of this address is also the last byte of the hardware address.
    port.addresses.splitTunnel.first = 0x0a141e00;
    port.splitTunnelSecond = 0xac101f01;
    std::ranges::copy(simHardwareAddress(network->interface().c_str()), port.addresses.mac);
    return port;
}

/// The least secure of the options that the configuration allows.
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
    info.echoInterval = config.number("echo-interval");
    info.discoveryInterval = config.number("discovery-interval");
    info.reportInterval = config.number("report-interval");
    info.idleTimeout = config.number("idle-timeout");
    info.statisticsInterval = config.number("statistics-timer");
    info.stationStatisticsInterval = config.number("StaStatsRptInterval");
    info.vapStatisticsInterval = config.number("VapStatsRptInterval");
    info.radioStatisticsInterval = 30;
    info.stationCapabilityInterval = config.number("StaCapRptInterval");
    info.managementVlan = config.number("ap-mgmt-vlanid");
    info.retryCount = link.retries;
    info.connectTime = static_cast<uint32_t>(link.connectTime);
    info.apAddress = ownAddress();
    info.acAddress = link.controller;
    info.acPorts[0] = config.number("ac-ctl-port");
    info.acPorts[1] = static_cast<uint16_t>(info.acPorts[0] + 1);
    info.dataSecurity = securityCode(config.text("data-channel-sec"));
    info.lanPortCount = std::size(kPortUses);
    info.fragmentPrevention = ApInfo::kTcpMss | ApInfo::kTunnelMtu;
    info.uplinkMtu = 1500;
    info.downlinkMtu = 1420;
    fillText(info.name, config.text("name").empty() ? readHostName() : config.text("name"));
    fillText(info.location, config.text("location"));
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
