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

constexpr std::size_t kRecordSize = 2064;
constexpr std::size_t kBitmapSize = 128;
constexpr unsigned kModeAp = 1;
constexpr unsigned kModeDisabled = 2;
constexpr unsigned kMaximumDistance = 1000;

/// Channels `first`, `first` + `step` and so on.
struct ChannelRange {
    unsigned first;
    unsigned count;
    unsigned step;
};

using Ranges = std::vector<ChannelRange>;

struct Radio {
    unsigned id;
    const char* interface;
    unsigned typeBits;
    unsigned band;
    unsigned mcs;
    unsigned ackTimeout;
};

constexpr Radio kRadios[] = {
    {0, "wlan0", 0x2008, 0, 15, 64},
    {1, "wlan1", 16, 1, 9, 25},
};

/// Where a country's channels end.
struct ChannelLimits {
    std::string_view country;
    unsigned last24;
    unsigned last100; ///< of those from 100 on; 0: none
    unsigned last149;
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

ChannelRange upTo(unsigned first, unsigned last)
{
    return {first, last < first ? 0 : (last - first) / 4 + 1, 4};
}

Ranges rangesOf(const Radio& radio, const ChannelLimits& limits)
{
    if (radio.band == 0)
        return {{1, limits.last24, 1}};
    Ranges ranges = {upTo(36, 64), upTo(100, limits.last100), upTo(149, limits.last149)};
    std::erase_if(ranges, [](const ChannelRange& range) { return range.count == 0; });
    return ranges;
}

unsigned countOf(const Ranges& ranges)
{
    return std::accumulate(ranges.begin(), ranges.end(), 0U,
                           [](unsigned sum, const ChannelRange& range) { return sum + range.count; });
}

void putBitmap(RecordWriter& record, std::size_t offset, const Ranges& ranges)
{
    for (const ChannelRange& range : ranges)
        for (unsigned i = 0; i < range.count; ++i)
            record.setBit(offset, kBitmapSize, range.first + i * range.step);
}

void putChannels(RecordWriter& record, const Radio& radio, const std::string& country)
{
    const Ranges allowed = rangesOf(radio, limitsOf(country));
    std::size_t entry = 24;
    for (const ChannelRange& range : allowed) {
        record.put16(entry + 2, range.first);
        record.put16(entry + 4, range.count);
        entry += 8;
    }
    const Ranges chosen = radio.band == 0 ? Ranges{{1, 3, 5}} : allowed;
    record.put32(88, countOf(chosen));
    record.put32(92, 300);
    putBitmap(record, 96, chosen);
    putBitmap(record, 272, allowed);
    putBitmap(record, 400, rangesOf(radio, kHardware));
    if (radio.band != 0)
        putBitmap(record, 528, {{52, 2, 4}});
    record.put8(264, countOf(allowed));
}

unsigned setting(const Radio& radio, const char* name)
{
    return static_cast<unsigned>(simInterfaceNumber(radio.interface, name));
}

void putRadio(Bytes& reply, const Radio& radio)
{
    RecordWriter record(reply, kRecordSize);
    char country[4];
    simInterfaceText(radio.interface, "country", country, sizeof country);
    record.put8(0, radio.id);
    record.put8(2, setting(radio, "up") != 0 ? kModeAp : kModeDisabled);
    record.put16(232, kMaximumDistance);
    record.put16(236, radio.typeBits);
    record.put8(238, radio.band);
    record.putText(239, 4, configuredCountry());
    record.putText(243, 4, country);
    record.put8(253, radio.band == 0);
    record.put8(254, setting(radio, "coexist"));
    record.put8(255, static_cast<unsigned>(transmitPower(radio.id)));
    record.put16(258, setting(radio, "beacon_interval"));
    record.put8(260, radio.mcs);
    record.put8(261, 1);
    record.put8(262, setting(radio, "mib/use40M"));
    record.put8(263, radio.ackTimeout);
    record.put8(265, setting(radio, "channel"));
    putChannels(record, radio, country);
}

} // namespace

Bytes radioReply()
{
    Bytes reply;
    for (const Radio& radio : kRadios)
        putRadio(reply, radio);
    return reply;
}
