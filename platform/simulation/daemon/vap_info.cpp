// The VAPs and the stations on them.

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <string>

#include "platform/simulation/daemon/hardware_address.h"
#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

/// Interfaces of fresh devices that are in use, and the stations found there.
constexpr int kDefaultVaps = 6;
constexpr int kDefaultStations = 5;
constexpr int kMostStations = 511;

constexpr uint16_t kCapabilities = 0x0421;

enum Mac : uint8_t { kLocalMac, kSplitMac };
enum Tunnel : uint8_t { kNoTunnel, kTunnel8023, kTunnel80211 };
enum class Security : uint8_t { open, staticKey, wpaKey, wpaRadius };

struct Vap {
    uint8_t radio;
    uint8_t number; ///< on its radio
    Mac mac;
    Tunnel tunnel;
    Security security;
    uint16_t flags;
    const char* authentication;
    uint16_t vlan;
    uint8_t probeSuppression;
    uint8_t meshBackhaul;
};

constexpr uint16_t kPortal = VapRecord::kStandalone | VapRecord::kLocalBridging | VapRecord::kCaptivePortal;
constexpr uint16_t kBranch = VapRecord::kSplitTunnel | VapRecord::kLocalBridging | VapRecord::kLocalAuthentication;

constexpr Vap kVaps[] = {
    {0, 0, kSplitMac, kTunnel8023, Security::wpaRadius, 0, "WPA2-RADIUS", 10, 1, 0},
    {1, 0, kSplitMac, kTunnel80211, Security::wpaRadius, 0, "WPA2-RADIUS", 10, 0, 0},
    {0, 1, kLocalMac, kNoTunnel, Security::open, kPortal, "OPEN", 20, 0, 0},
    {1, 1, kLocalMac, kNoTunnel, Security::open, kPortal, "OPEN", 20, 0, 0},
    {0, 2, kLocalMac, kTunnel8023, Security::staticKey, VapRecord::kLocalSwitching, "SHARED-KEY", 30, 2, 0},
    {1, 2, kLocalMac, kTunnel8023, Security::wpaKey, kBranch, "WPA2-PSK", 31, 0, 0},
    {0, 3, kLocalMac, kTunnel8023, Security::wpaKey, 0, "WPA/WPA2-PSK", 40, 0, 0},
    {1, 3, kLocalMac, kTunnel8023, Security::wpaKey, VapRecord::kLocalBridging, "WPA2-PSK", 0, 0, 1},
};

constexpr char kStaticKey[] = "scan-5-digits";
constexpr uint8_t kWpaKeyLength = 32;
constexpr const char* kAuthenticationServers[] = {"192.168.1.20", "192.168.1.21"};
constexpr const char* kAccountingServers[] = {"192.168.1.20", "", "192.168.1.22"};

std::string radioInterface(const Vap& vap)
{
    return "wlan" + std::to_string(vap.radio);
}

std::string interfaceOf(const Vap& vap)
{
    return radioInterface(vap) + "-va" + std::to_string(vap.number);
}

bool isUp(const std::string& interface)
{
    return simInterfaceNumber(interface.c_str(), "up") != 0;
}

std::string ssidOf(const Vap& vap)
{
    char ssid[33];
    simInterfaceText(interfaceOf(vap).c_str(), "ssid", ssid, sizeof ssid);
    return ssid;
}

std::span<const Vap> vaps()
{
    const int count = std::clamp(simReadNumber("daemon/vaps", kDefaultVaps), 0, static_cast<int>(std::size(kVaps)));
    return {kVaps, static_cast<std::size_t>(count)};
}

template <std::size_t Size>
void setServers(char (*fields)[Size], std::span<const char* const> servers)
{
    for (const char* server : servers)
        fillText(*fields++, server);
}

void setWpaKey(VapRecord& record)
{
    constexpr uint8_t kTransmitCounter[] = {0, 0, 0, 0, 0x2a, 0x17};
    for (unsigned i = 0; i < kWpaKeyLength; ++i)
        record.key[i] = static_cast<uint8_t>(0x5b * (i + 1) + 0x11U * (record.wlan - 1U) + record.radio);
    record.keyIndex = 1;
    record.keyStatus = 1;
    record.keyLength = kWpaKeyLength;
    std::ranges::copy(kTransmitCounter, record.transmitCounter);
}

void describeSecurity(VapRecord& record, Security security)
{
    switch (security) {
    case Security::open:
        return;
    case Security::staticKey:
        record.keyStatus = 1;
        record.keyLength = sizeof kStaticKey - 1;
        std::memcpy(record.key, kStaticKey, sizeof kStaticKey);
        record.staticKey = 1;
        return;
    case Security::wpaRadius:
        fillText(record.accountingId, "office-" + std::to_string(record.radio));
        setServers(record.authenticationServers, kAuthenticationServers);
        setServers(record.accountingServers, kAccountingServers);
        [[fallthrough]];
    case Security::wpaKey:
        setWpaKey(record);
        return;
    }
}

VapRecord vapRecord(const Vap& vap, const ControllerLink::Status& link)
{
    const bool isAdminUp = isUp(interfaceOf(vap));
    const uint16_t privacy = vap.security != Security::open ? VapRecord::kPrivacy : 0;
    VapRecord record{};
    record.handle = 0x80a4c000 + 0x1000U * vap.radio + 0x100U * vap.number;
    record.radio = vap.radio;
    record.wlan = static_cast<uint8_t>(vap.number + 1);
    record.macMode = vap.mac;
    record.tunnel = vap.tunnel;
    record.flags.overlap = {vap.flags, static_cast<uint16_t>(kCapabilities | privacy)};
    record.accessControlList = vap.number == 2;
    record.qos = vap.radio == 1;
    record.meshBackhaul = vap.meshBackhaul;
    record.initialised = link.runs();
    record.adminDown = !isAdminUp;
    record.interfaceDown = !(isAdminUp && isUp(radioInterface(vap)));
    record.vlan = vap.vlan;
    record.probeSuppression = vap.probeSuppression;
    record.probeThreshold = static_cast<int8_t>(vap.probeSuppression != 0 ? -80 : 0);
    fillText(record.interface, interfaceOf(vap));
    std::ranges::copy(interfaceAddress(interfaceOf(vap)), record.bssid);
    fillText(record.name, ssidOf(vap));
    fillText(record.authentication, vap.authentication);
    describeSecurity(record, vap.security);
    if ((vap.flags & VapRecord::kCaptivePortal) != 0)
        fillText(record.portalServer, "192.168.1.30:8443");
    return record;
}

StationRecord stationRecord(unsigned index, const Vap& vap, unsigned associationId)
{
    const uint8_t mac[] = {0x02, 0x5a, 0x10, 0x00, static_cast<uint8_t>(index >> 8), static_cast<uint8_t>(index)};
    StationRecord record{};
    record.number = static_cast<uint8_t>(index + 1);
    record.type = static_cast<uint8_t>(vap.meshBackhaul != 0 ? 2 : 1 + 2 * (index % 5 == 4));
    record.radio = vap.radio;
    record.aid = static_cast<uint16_t>(associationId);
    record.vap = vap.number;
    record.vlan = vap.vlan;
    std::ranges::copy(interfaceAddress(interfaceOf(vap)), record.bssid);
    std::ranges::copy(mac, record.mac);
    fillText(record.ssid, ssidOf(vap));
    return record;
}

} // namespace

Bytes vapReply(const ControllerLink::Status& link)
{
    Bytes reply;
    append(reply, htonl(static_cast<uint32_t>(vaps().size())));
    for (const Vap& vap : vaps())
        append(reply, vapRecord(vap, link));
    return reply;
}

Bytes stationReply()
{
    std::vector<Vap> serving;
    for (const Vap& vap : vaps())
        if (isUp(radioInterface(vap)) && isUp(interfaceOf(vap)))
            serving.push_back(vap);
    const int wanted = std::clamp(simReadNumber("daemon/stations", kDefaultStations), 0, kMostStations);
    const unsigned count = serving.empty() ? 0 : static_cast<unsigned>(wanted);

    Bytes reply;
    append(reply, htonl(count));
    for (unsigned i = 0; i < count; ++i)
        append(reply, stationRecord(i, serving[i % serving.size()], i / static_cast<unsigned>(serving.size()) + 1));
    return reply;
}
