#include "platform/simulation/daemon/vap_info.h"

#include <algorithm>
#include <arpa/inet.h>
#include <string>

#include "platform/simulation/daemon/network.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/radio_state.h"

namespace
{

constexpr uint32_t kCapabilities = 0x0421;

/// The names of the driver's authentication types.
constexpr const char* kAuthentications[] = {"OPEN", "WPA-PSK", "WPA2-PSK", "WPA/WPA2-PSK", "WPA2-RADIUS"};
constexpr int kOpen = 0;
constexpr int kRadius = 4;

/// Fills the fields for authentication and keys. The authentication type is a setting of the driver.
void describeSecurity(VapRecord& record, const Network& network)
{
    const int type = simInterfaceNumber(record.interface, "auth_type");
    const bool isKnown = type >= kOpen && type < static_cast<int>(std::size(kAuthentications));
    fillText(record.authentication, isKnown ? kAuthentications[type] : "Unknown");
    if (type == kOpen)
        return;
    record.flags |= VapRecord::kPrivacy;
    record.keyIndex = 1;
    record.keyStatus = 1;
    record.keyLength = 32;
    for (unsigned i = 0; i < record.keyLength; ++i)
        record.key[i] = static_cast<uint8_t>(0x5b * (i + 1) + 0x11U * (record.wlan - 1U) + record.radio);
    record.transmitCounter[4] = 0x2a;
    record.transmitCounter[5] = 0x17;
    if (type != kRadius)
        return;
    fillText(record.accountingId, network.ssid() + "-" + std::to_string(network.radio));
    fillText(record.authenticationServers[0], "192.168.1.20");
    fillText(record.authenticationServers[1], "192.168.1.21");
    fillText(record.accountingServers[0], "192.168.1.20");
    fillText(record.accountingServers[2], "192.168.1.22");
}

VapRecord vapRecord(const Network& network, bool linkRuns)
{
    VapRecord record{};
    record.handle = 0x80a4c000 + 0x1000U * network.radio + 0x100U * network.number;
    record.radio = network.radio;
    record.wlan = static_cast<uint8_t>(network.number + 1);
    record.macMode = network.mac;
    record.tunnel = network.tunnel;
    record.flags = network.flags() | kCapabilities << VapRecord::kCapabilityShift;
    record.accessControlList = network.number == 2;
    record.qos = network.radio == 1;
    record.meshBackhaul = network.meshBackhaul;
    record.initialised = linkRuns || network.isStandalone();
    record.adminDown = !network.isEnabled();
    record.interfaceDown = !network.serves(linkRuns);
    record.vlan = network.vlan;
    record.probeSuppression = network.probeSuppression;
    record.probeThreshold = static_cast<int8_t>(network.probeSuppression != 0 ? -80 : 0);
    fillText(record.interface, network.interface());
    std::ranges::copy(simHardwareAddress(network.interface().c_str()), record.bssid);
    fillText(record.name, network.ssid());
    describeSecurity(record, network);
    if ((network.features & VapRecord::kCaptivePortal) != 0)
        fillText(record.portalServer, "192.168.1.30:8443");
    return record;
}

StationRecord stationRecord(const Station& station, std::size_t place)
{
    const auto [index, associationId, network] = station;
    const uint8_t mac[] = {0x02, 0x5a, 0x10, 0x00, static_cast<uint8_t>(index >> 8), static_cast<uint8_t>(index)};
    StationRecord record{};
    record.number = static_cast<uint8_t>(place);
    record.type = static_cast<uint8_t>(network->meshBackhaul != 0 ? 2 + associationId % 2 : 1);
    record.radio = network->radio;
    record.aid = static_cast<uint16_t>(associationId);
    record.vap = network->number;
    record.vlan = network->vlan;
    std::ranges::copy(simHardwareAddress(network->interface().c_str()), record.bssid);
    std::ranges::copy(mac, record.mac);
    fillText(record.ssid, network->ssid());
    return record;
}

} // namespace

Bytes vapReply(bool linkRuns)
{
    Bytes reply;
    append(reply, htonl(static_cast<uint32_t>(networks().size())));
    for (const Network& network : networks())
        append(reply, vapRecord(network, linkRuns));
    return reply;
}

Bytes stationReply(bool linkRuns)
{
    const std::vector<Station> stations = presentStations(linkRuns);
    Bytes reply;
    append(reply, htonl(static_cast<uint32_t>(stations.size())));
    std::size_t place = 0;
    for (const Station& station : stations)
        append(reply, stationRecord(station, ++place));
    return reply;
}

Bytes radioReply()
{
    Bytes reply;
    for (const char* radio : {"wlan0", "wlan1"})
        append(reply, simRadio(radio).record);
    return reply;
}
