// The VAPs and the stations on them.

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <string>

#include "platform/simulation/daemon/hardware_address.h"
#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

constexpr std::size_t kVapSize = 2772;
constexpr std::size_t kStationSize = 128;

/// Interfaces of fresh devices that are in use, and the stations found there.
constexpr int kDefaultVaps = 6;
constexpr int kDefaultStations = 5;
constexpr int kMostStations = 511;

constexpr unsigned kLocalSwitching = 1U << 0;
constexpr unsigned kLocalBridging = 1U << 1;
constexpr unsigned kLocalAuthentication = 1U << 3;
constexpr unsigned kStandalone = 1U << 5;
constexpr unsigned kSplitTunnel = 1U << 6;
constexpr unsigned kCaptivePortal = 1U << 8;

constexpr unsigned kCapabilities = 0x0421;
constexpr unsigned kPrivacy = 0x0800;

enum Mac : uint8_t { kLocalMac, kSplitMac };
enum Tunnel : uint8_t { kNoTunnel, kTunnel8023, kTunnel80211 };
enum class Security : uint8_t { open, staticKey, wpaKey, wpaRadius };

struct Vap {
    unsigned radio;
    unsigned number; ///< on its radio
    Mac mac;
    Tunnel tunnel;
    Security security;
    unsigned flags;
    const char* authentication;
    unsigned vlan;
    unsigned probeSuppression;
    unsigned meshBackhaul;
};

constexpr Vap kVaps[] = {
    {0, 0, kSplitMac, kTunnel8023, Security::wpaRadius, 0, "WPA2-RADIUS", 10, 1, 0},
    {1, 0, kSplitMac, kTunnel80211, Security::wpaRadius, 0, "WPA2-RADIUS", 10, 0, 0},
    {0, 1, kLocalMac, kNoTunnel, Security::open, kStandalone | kLocalBridging | kCaptivePortal, "OPEN", 20, 0, 0},
    {1, 1, kLocalMac, kNoTunnel, Security::open, kStandalone | kLocalBridging | kCaptivePortal, "OPEN", 20, 0, 0},
    {0, 2, kLocalMac, kTunnel8023, Security::staticKey, kLocalSwitching, "SHARED-KEY", 30, 2, 0},
    {1, 2, kLocalMac, kTunnel8023, Security::wpaKey, kSplitTunnel | kLocalBridging | kLocalAuthentication, "WPA2-PSK",
     31, 0, 0},
    {0, 3, kLocalMac, kTunnel8023, Security::wpaKey, 0, "WPA/WPA2-PSK", 40, 0, 0},
    {1, 3, kLocalMac, kTunnel8023, Security::wpaKey, kLocalBridging, "WPA2-PSK", 0, 0, 1},
};

constexpr char kStaticKey[] = "scan-5-digits";
constexpr std::size_t kWpaKeyLength = 32;
constexpr const char* kAuthenticationServers[] = {"192.168.0.10", "192.168.0.11"};
constexpr const char* kAccountingServers[] = {"192.168.0.10", "", "192.168.0.12"};
constexpr std::size_t kServerSize = 64;

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

void putCount(Bytes& reply, std::size_t count)
{
    RecordWriter(reply, sizeof(uint32_t)).put32(0, htonl(static_cast<uint32_t>(count)));
}

void putServers(RecordWriter& record, std::size_t offset, std::span<const char* const> servers)
{
    for (const char* server : servers) {
        record.putText(offset, kServerSize, server);
        offset += kServerSize;
    }
}

void putWpaKey(RecordWriter& record, const Vap& vap)
{
    std::array<uint8_t, kWpaKeyLength> key;
    for (std::size_t i = 0; i < key.size(); ++i)
        key[i] = static_cast<uint8_t>(0x5b * (i + 1) + 0x11UL * vap.number + vap.radio);
    record.put8(48, 1);
    record.put8(49, 1);
    record.put16(50, kWpaKeyLength);
    record.putBytes(52, key);
    record.putBytes(116, std::array<uint8_t, 6>{0, 0, 0, 0, 0x2a, 0x17});
}

void putSecurity(RecordWriter& record, const Vap& vap)
{
    record.putText(158, 36, vap.authentication);
    switch (vap.security) {
    case Security::open:
        return;
    case Security::staticKey:
        record.put8(49, 1);
        record.put16(50, sizeof kStaticKey - 1);
        record.putText(52, 64, kStaticKey);
        record.put8(124, 1);
        return;
    case Security::wpaRadius:
        record.putText(209, 64, "office-" + std::to_string(vap.radio));
        putServers(record, 273, kAuthenticationServers);
        putServers(record, 465, kAccountingServers);
        [[fallthrough]];
    case Security::wpaKey:
        putWpaKey(record, vap);
        return;
    }
}

void putVap(Bytes& reply, const Vap& vap, const WtpConfig& config, const ControllerLink::Status& link)
{
    RecordWriter record(reply, kVapSize);
    const bool isLocal = vap.tunnel == kNoTunnel;
    const bool isAdminUp = isUp(interfaceOf(vap));
    record.put32(4, 0x80a4c000 + 0x1000 * vap.radio + 0x100 * vap.number);
    record.put8(8, vap.radio);
    record.putText(9, 16, interfaceOf(vap));
    record.putBytes(25, vapAddress(vap.radio, vap.number));
    record.put32(32, isLocal ? config.staticAddress : 0);
    record.put32(36, isLocal ? config.staticNetmask : 0);
    record.put8(40, vap.number + 1);
    record.put8(42, vap.mac);
    record.put8(43, vap.tunnel);
    record.put16(44, vap.flags);
    record.put16(46, kCapabilities | (vap.security != Security::open ? kPrivacy : 0));
    record.put8(122, vap.number == 2);
    record.put8(123, vap.radio == 1);
    record.putText(125, 33, ssidOf(vap));
    putSecurity(record, vap);
    record.put8(194, vap.meshBackhaul);
    record.put8(195, link.runs());
    record.put8(196, !isAdminUp);
    record.put8(197, !(isAdminUp && isUp(radioInterface(vap))));
    record.put16(198, vap.vlan);
    record.put8(200, vap.probeSuppression);
    record.put8(201, static_cast<uint8_t>(vap.probeSuppression != 0 ? -80 : 0));
    record.putText(721, 64, (vap.flags & kCaptivePortal) != 0 ? "192.168.0.20:8443" : "");
}

void putStation(Bytes& reply, unsigned index, const Vap& vap, unsigned associationId)
{
    RecordWriter record(reply, kStationSize);
    record.put8(0, index + 1);
    record.put8(1, vap.meshBackhaul != 0 ? 2 : 1 + 2 * (index % 5 == 4));
    record.put8(14, vap.radio);
    record.put16(16, associationId);
    record.put8(18, vap.number);
    record.putBytes(20, vapAddress(vap.radio, vap.number));
    record.putBytes(26, std::array<uint8_t, 6>{0x02, 0x5a, 0x10, 0x00, static_cast<uint8_t>(index >> 8),
                                               static_cast<uint8_t>(index)});
    record.put16(38, vap.vlan);
    record.putText(90, 33, ssidOf(vap));
}

} // namespace

Bytes vapReply(const WtpConfig& config, const ControllerLink::Status& link)
{
    Bytes reply;
    putCount(reply, vaps().size());
    for (const Vap& vap : vaps())
        putVap(reply, vap, config, link);
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
    putCount(reply, count);
    for (unsigned i = 0; i < count; ++i)
        putStation(reply, i, serving[i % serving.size()], i / static_cast<unsigned>(serving.size()) + 1);
    return reply;
}
