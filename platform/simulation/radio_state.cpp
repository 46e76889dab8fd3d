#include "platform/simulation/radio_state.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "platform/device_file.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

constexpr uint8_t kAccessPoint = 1;

template <typename Number = uint8_t>
Number setting(const char* radio, const char* name)
{
    return static_cast<Number>(simInterfaceNumber(radio, name));
}

void readBand(SimRadio& radio, int band)
{
    FILE* file = std::fopen(DeviceFile("/sim/bands").path(), "re");
    if (file == nullptr)
        return;
    char row[128];
    while (std::fgets(row, sizeof row, file) != nullptr) {
        int bits = 0;
        char mode[sizeof radio.mode];
        unsigned type = 0;
        uint8_t gigahertz = 0;
        RadioRecord& record = radio.record;
        if (std::sscanf(row, "%d %15s %x %hhu %hhu %hhu %hhu %d", &bits, mode, &type, &gigahertz, &record.width,
                        &record.mcs, &record.ackTimeout, &radio.maximumPower) != 8 ||
            (band & bits) != bits)
            continue;
        std::memcpy(radio.mode, mode, sizeof mode);
        record.type = static_cast<uint16_t>(type);
        record.is5GHz = gigahertz == 5;
        break;
    }
    std::fclose(file);
}

/// Calls `take` with those channels of a list that are in the radio's band.
template <typename Take>
void eachChannel(const char* list, const RadioRecord& radio, Take take)
{
    constexpr unsigned kLast24GHz = 14;
    constexpr unsigned kLast5GHz = 177;
    unsigned channel = 0;
    for (int length = 0; std::sscanf(list, "%u%n", &channel, &length) == 1; list += length)
        if (channel <= kLast5GHz && (channel > kLast24GHz) == (radio.is5GHz != 0))
            take(static_cast<uint8_t>(channel));
}

void mark(ChannelMap& map, unsigned channel)
{
    map[channel / 8] |= static_cast<uint8_t>(1U << channel % 8);
}

bool isIn(const ChannelMap& map, unsigned channel)
{
    return (map[channel / 8] >> channel % 8 & 1) != 0;
}

/// Sets the channels of a country. The radio uses the configured channel, or the first one if that is not allowed.
void setChannels(RadioRecord& record, const char* list, int configured)
{
    ChannelRange* next = record.acRanges;
    eachChannel(list, record, [&](uint8_t channel) {
        mark(record.allowedChannels, channel);
        ++record.channelCount;
        if (record.is5GHz != 0 || channel % 5 == 1) {
            mark(record.acChannels, channel);
            ++record.acChannelNumber;
        }
        if (next != record.acRanges && channel == next[-1].first + next[-1].count * (record.is5GHz != 0 ? 4 : 1))
            ++next[-1].count;
        else if (next != std::end(record.acRanges))
            *next++ = {0, channel, 1, 0};
        if (!isIn(record.nonOccupancyChannels, channel) && (record.channel == 0 || channel == configured))
            record.channel = channel;
    });
}

/// Halves the width until all channels of the 5 GHz block are allowed.
uint8_t operatingWidth(const RadioRecord& record, uint8_t width)
{
    const int place = record.channel - (record.channel < 149 ? 36 : 149);
    for (; record.is5GHz != 0 && width > 0; --width)
        if (const int size = 4 << width; isIn(record.allowedChannels, record.channel - place % size + size - 4))
            break;
    return width;
}

} // namespace

SimRadio simRadio(const char* interface)
{
    char name[sizeof "wlan0"]{};
    std::snprintf(name, sizeof name, "%.5s", interface);
    SimRadio radio{};
    readBand(radio, simInterfaceNumber(name, "mib/band"));
    RadioRecord& record = radio.record;
    record.id = static_cast<uint8_t>(name[4] - '0');
    record.mode = simInterfaceNumber(name, "up") != 0 ? kAccessPoint : RadioRecord::kDisabled;
    record.protectionMode = record.is5GHz == 0;
    record.coexistence = setting(name, "coexist");
    record.txPower = setting(name, "power");
    record.beaconInterval = setting<uint16_t>(name, "beacon_interval");
    record.shortGuardInterval = 1;
    record.acChannelAge = 300;
    simInterfaceText(name, "country", record.operatingCountry, sizeof record.operatingCountry);
    std::ranges::copy(record.operatingCountry, record.configuredCountry);

    char list[256];
    simReadText("channels/hardware", list, sizeof list, "");
    eachChannel(list, record, [&record](uint8_t channel) { mark(record.hardwareChannels, channel); });
    simInterfaceText(name, "radar", list, sizeof list);
    eachChannel(list, record, [&record](uint8_t channel) { mark(record.nonOccupancyChannels, channel); });
    char ofCountry[32];
    std::snprintf(ofCountry, sizeof ofCountry, "channels/%s", record.operatingCountry);
    if (!simReadText(ofCountry, list, sizeof list, ""))
        simReadText("channels/default", list, sizeof list, "");
    setChannels(record, list, simInterfaceNumber(name, "channel"));
    record.width = operatingWidth(record, std::min(record.width, setting(name, "mib/use40M")));
    return radio;
}

bool simIsBand(int band)
{
    SimRadio radio{};
    readBand(radio, band);
    return radio.mode[0] != '\0';
}

bool simSetCountry(const char* radio, const RegulatoryCountry& country)
{
    return simIsInterface(radio) && simSetInterfaceText(radio, "country", country.code) &&
           simSetInterfaceNumber(radio, "channel", simRadio(radio).record.channel);
}
