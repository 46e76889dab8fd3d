// The radios: country, parameters and channel lists.

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>

#include "platform/simulation/daemon/applied_settings.h"
#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/interface_state.h"

namespace
{

constexpr uint8_t kAccessPoint = 1;
constexpr uint16_t kMaximumDistance = 1000;

/// Channels `first`, `first` + `step` and so on.
struct Channels {
    uint16_t first;
    uint16_t count;
    unsigned step;
};

using Ranges = std::vector<Channels>;

struct Radio {
    uint8_t id;
    const char* interface;
    uint16_t typeBits;
    uint8_t band;
    uint8_t mcs;
    uint8_t ackTimeout;
};

constexpr Radio kRadios[] = {
    {0, "wlan0", 0x2008, 0, 15, 64},
    {1, "wlan1", 16, 1, 9, 25},
};

/// Where a country's channels end.
struct ChannelLimits {
    std::string_view country;
    uint16_t last24;
    uint16_t last100; ///< of those from 100 on; 0: none
    uint16_t last149;
};

/// The last row holds for everybody else.
constexpr ChannelLimits kLimits[] = {
    {"US", 11, 144, 165}, {"CA", 11, 144, 165}, {"CN", 13, 0, 165}, {"JP", 14, 144, 0}, {"", 13, 140, 0},
};

constexpr ChannelLimits kHardware = {"", 14, 144, 165};

const ChannelLimits& limitsOf(const std::string& country)
{
    return *std::find_if(std::begin(kLimits), std::end(kLimits) - 1,
                         [&country](const ChannelLimits& row) { return row.country == country; });
}

Channels upTo(uint16_t first, uint16_t last)
{
    return {first, static_cast<uint16_t>(last < first ? 0 : (last - first) / 4 + 1), 4};
}

Ranges rangesOf(const Radio& radio, const ChannelLimits& limits)
{
    if (radio.band == 0)
        return {{1, limits.last24, 1}};
    Ranges ranges = {upTo(36, 64), upTo(100, limits.last100), upTo(149, limits.last149)};
    std::erase_if(ranges, [](const Channels& range) { return range.count == 0; });
    return ranges;
}

unsigned countOf(const Ranges& ranges)
{
    return std::accumulate(ranges.begin(), ranges.end(), 0U,
                           [](unsigned sum, const Channels& range) { return sum + range.count; });
}

void mark(ChannelMap& map, const Ranges& ranges)
{
    for (const Channels& range : ranges)
        for (unsigned i = 0; i < range.count; ++i) {
            const unsigned channel = range.first + i * range.step;
            map[channel / 8] |= static_cast<uint8_t>(1U << channel % 8);
        }
}

void setChannels(RadioRecord& record, const Radio& radio, const std::string& country)
{
    const Ranges allowed = rangesOf(radio, limitsOf(country));
    ChannelRange* entry = record.acRanges;
    for (const Channels& range : allowed) {
        entry->first = range.first;
        entry++->count = range.count;
    }
    const Ranges chosen = radio.band == 0 ? Ranges{{1, 3, 5}} : allowed;
    record.acChannelNumber = static_cast<int32_t>(countOf(chosen));
    record.acChannelAge = 300;
    mark(record.acChannels, chosen);
    mark(record.allowedChannels, allowed);
    mark(record.hardwareChannels, rangesOf(radio, kHardware));
    if (radio.band != 0)
        mark(record.nonOccupancyChannels, {{52, 2, 4}});
    record.channelCount = static_cast<uint8_t>(countOf(allowed));
}

template <typename Number = uint8_t>
Number setting(const Radio& radio, const char* name)
{
    return static_cast<Number>(simInterfaceNumber(radio.interface, name));
}

RadioRecord radioRecord(const Radio& radio)
{
    RadioRecord record{};
    record.id = radio.id;
    record.mode = simInterfaceNumber(radio.interface, "up") != 0 ? kAccessPoint : RadioRecord::kDisabled;
    record.maxDistance = kMaximumDistance;
    record.type = radio.typeBits;
    record.is5GHz = radio.band;
    record.protectionMode = radio.band == 0;
    record.coexistence = setting(radio, "coexist");
    record.txPower = static_cast<uint8_t>(transmitPower(radio.id));
    record.beaconInterval = setting<uint16_t>(radio, "beacon_interval");
    record.mcs = radio.mcs;
    record.shortGuardInterval = 1;
    record.width = setting(radio, "mib/use40M");
    record.ackTimeout = radio.ackTimeout;
    record.channel = setting(radio, "channel");
    simInterfaceText(radio.interface, "country", record.operatingCountry, sizeof record.operatingCountry);
    fillText(record.configuredCountry, configuredCountry());
    setChannels(record, radio, record.operatingCountry);
    return record;
}

} // namespace

Bytes radioReply()
{
    Bytes reply;
    for (const Radio& radio : kRadios)
        append(reply, radioRecord(radio));
    return reply;
}
