// The access point's own record: identity, intervals, state of the link, LAN ports.

#include <algorithm>

#include "platform/simulation/daemon/hardware_address.h"
#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/daemon/uplink.h"

namespace
{

constexpr uint16_t kRadioStatisticsInterval = 30;

LanPort lanPort(uint8_t mode) noexcept
{
    LanPort port{};
    port.mode = mode;
    return port;
}

/// A port bridged to an SSID. The last octet of the first split-tunnel address is also that of its hardware address.
LanPort bridgedPort(uint8_t secondNumber, uint8_t flags, uint16_t vlan, std::string_view ssid, uint32_t first,
                    uint32_t second) noexcept
{
    LanPort port = lanPort(LanPort::kBridgedToSsid);
    port.secondNumber = secondNumber;
    port.flags = flags;
    port.vlanTag = vlan;
    fillText(port.ssid, ssid);
    port.addresses.splitTunnel.first = first;
    port.splitTunnelSecond = second;
    return port;
}

const LanPort kLanPorts[] = {
    lanPort(LanPort::kNatToWan),
    lanPort(LanPort::kBridgedToWan),
    bridgedPort(2, LanPort::kSt | LanPort::kLocalSwitching | LanPort::kLocalBridging | LanPort::kMesh, 0x0014, "guest",
                0x00000043, 0),
    bridgedPort(3, LanPort::kSplitTunnel, 0x001e, "branch", 0x0a141e44, 0xac101f01),
    lanPort(LanPort::kOffline),
};

LanPort withHardwareAddress(LanPort port)
{
    const HardwareAddress base = baseAddress();
    std::copy_n(base.begin(), sizeof port.addresses.splitTunnel.macHead, port.addresses.splitTunnel.macHead);
    return port;
}

uint8_t securityCode(const WtpConfig& config)
{
    return config.dataChannelSecurity.find("clear") != std::string::npos ? ApInfo::kClearText : ApInfo::kDtlsDetails;
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
    info.lanPortCount = std::size(kLanPorts);
    info.fragmentPrevention = ApInfo::kTcpMss | ApInfo::kTunnelMtu;
    info.uplinkMtu = 1500;
    info.downlinkMtu = 1420;
    fillText(info.name, config.name.empty() ? readHostName() : config.name);
    fillText(info.location, config.location);
    fillText(info.retryReason, link.retryReason);
    fillText(info.state, link.state);
    fillText(info.dtlsCipher, "AES128-SHA");
    std::ranges::copy(baseAddress(), info.baseMac);
    std::ranges::transform(kLanPorts, info.lanPorts, withHardwareAddress);

    Bytes reply;
    append(reply, info);
    reply.resize(ApInfo::kReplyLength);
    return reply;
}
