// A daemon's side of the message channel that answers at once, with as many full records as the environment says:
// STATIONS, VAPS, RADIOS. Without the variable nobody answers. The reply is made once, so that a further query costs
// the shell what it costs and a copy.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/daemon_records.h"
#include "platform/message_channel.h"

namespace
{

template <std::size_t Size>
void setText(char (&field)[Size], const char* text)
{
    std::snprintf(field, Size, "%s", text);
}

void setMac(std::uint8_t (&mac)[6], int kind, int number)
{
    const std::uint8_t bytes[6] = {2,
                                   26,
                                   43,
                                   static_cast<std::uint8_t>(kind),
                                   static_cast<std::uint8_t>(number >> 8),
                                   static_cast<std::uint8_t>(number)};
    std::memcpy(mac, bytes, sizeof mac);
}

void fill(StationRecord& station, int number)
{
    station.number = static_cast<std::uint8_t>(number);
    station.type = 1;
    station.radio = number & 1;
    station.aid = static_cast<std::uint16_t>(number);
    station.vap = number & 7;
    setMac(station.bssid, 49, number & 7);
    setMac(station.mac, 1, number);
    station.vlan = static_cast<std::uint16_t>(10 + (number & 7));
    setText(station.ssid, "a network of the office");
}

void fill(VapRecord& vap, int number)
{
    vap.handle = 0x00410000U + static_cast<std::uint32_t>(number) * 4096U;
    vap.radio = number & 1;
    std::snprintf(vap.interface, sizeof vap.interface, "wlan%d-va%d", number & 1, number & 3);
    setMac(vap.bssid, 49, number & 7);
    vap.address = 0xC0A80139;
    vap.netmask = 0xFFFFFF00;
    vap.wlan = static_cast<std::uint8_t>(number);
    vap.macMode = 1;
    vap.tunnel = 2;
    vap.flags = VapRecord::kPrivacy | VapRecord::kLocalSwitching | VapRecord::kLocalBridging;
    vap.keyIndex = 1;
    vap.keyLength = 32;
    for (std::size_t i = 0; i < vap.keyLength; ++i)
        vap.key[i] = static_cast<std::uint8_t>(7 * i);
    vap.qos = 1;
    setText(vap.name, "a network of the office");
    setText(vap.authentication, "WPA2_RADIUS");
    vap.initialised = 1;
    vap.vlan = static_cast<std::uint16_t>(10 + number);
    vap.probeSuppression = 1;
    vap.probeThreshold = -80;
    setText(vap.accountingId, "accounting");
    for (auto& server : vap.authenticationServers)
        setText(server, "192.168.100.120");
    for (auto& server : vap.accountingServers)
        setText(server, "192.168.100.122");
}

void fill(RadioRecord& radio, int number)
{
    radio.id = static_cast<std::uint8_t>(number - 1);
    radio.acRanges[0] = {0, 36, 4, 0};
    radio.type = 0x0010;
    radio.is5GHz = 1;
    setText(radio.configuredCountry, "DE");
    setText(radio.operatingCountry, "DE");
    radio.txPower = 100;
    radio.beaconInterval = 100;
    radio.mcs = 9;
    radio.width = 1;
    radio.ackTimeout = 25;
    radio.channelCount = 19;
    radio.channel = 36;
    for (ChannelMap* map : {&radio.acChannels, &radio.allowedChannels, &radio.hardwareChannels})
        std::memset(*map + 4, 0x11, 17);
}

/// A reply with as many records as the variable says; behind their number, where the reply has one.
template <typename Record, bool HasCount>
int answer(const char* variable, void* reply, int& length)
{
    static char whole[65536];
    static std::size_t wholeLength = 0;
    const char* const value = std::getenv(variable);
    if (value == nullptr)
        return -1;
    if (wholeLength == 0) {
        constexpr int kMost = static_cast<int>((sizeof whole - sizeof(std::uint32_t)) / sizeof(Record));
        const int count = std::min(std::atoi(value), kMost);
        if (HasCount) {
            whole[2] = static_cast<char>(count >> 8);
            whole[3] = static_cast<char>(count);
            wholeLength = 4;
        }
        for (int i = 1; i <= count; ++i, wholeLength += sizeof(Record))
            fill(*reinterpret_cast<Record*>(whole + wholeLength), i);
    }
    length = static_cast<int>(wholeLength);
    std::memcpy(reply, whole, wholeLength);
    return 0;
}

} // namespace

int ipcmsg_send_and_recv(int, int, int type, const void*, int, void* reply, int* reply_length, int)
{
    switch (type) {
    case kQueryVaps:
        return answer<VapRecord, true>("VAPS", reply, *reply_length);
    case kQueryStations:
        return answer<StationRecord, true>("STATIONS", reply, *reply_length);
    case kQueryRadios:
        return answer<RadioRecord, false>("RADIOS", reply, *reply_length);
    default:
        return -1;
    }
}
