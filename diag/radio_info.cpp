#include "diag/radio_info.h"

#include <algorithm>

#include "diag/reply.h"
#include "diag/value_names.h"
#include "platform/daemon_records.h"
#include "shell/output.h"

namespace
{

constexpr std::uint8_t kWidth40MHz = 1;
constexpr std::uint16_t kHighThroughput = 1U << 3;
constexpr std::uint16_t kVeryHighThroughput = 1U << 4;
constexpr const char* kWidths[] = {"20MHz", "40MHz"};

/// The name of a radio is that of the first row whose bits are all set.
constexpr struct {
    std::uint16_t bits;
    const char* name;
} kRadioTypes[] = {
    {0x0002, "11A"},      {0x0001, "11B"},    {0x0004, "11G"}, {0x0010, "11AC"},
    {0x2008, "11N_2.4G"}, {0x5008, "11N_5G"}, {0x0008, "11N"}, {0x0000, "invalid"},
};

const char* typeName(std::uint16_t bits)
{
    return std::ranges::find_if(kRadioTypes, [bits](const auto& row) { return (bits & row.bits) == row.bits; })->name;
}

/// Length of a country's text, which ends at the first byte that is not a letter.
int countryLength(const char (&text)[4])
{
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    return static_cast<int>(std::ranges::find_if_not(text, isLetter) - text);
}

/// The ACK timeout in microseconds for a distance. `base` is the timeout of the band. From 100 metres on, adds the
/// round-trip time of the signal: 6.6 microseconds per kilometre, rounded up.
int ackTimeout(int base, int metres)
{
    constexpr int kFirstMeasured = 100;
    return metres < kFirstMeasured ? base : base + (metres * 66 + 9999) / 10000;
}

/// The position of the secondary channel of a 40 MHz radio: 1 above, -1 below, 0 none.
int secondaryOffset(bool is5GHz, int channel)
{
    if (!is5GHz)
        return channel <= 7 ? 1 : channel <= 14 ? -1 : 0;
    constexpr std::uint8_t kPairs[] = {36, 44, 52, 60, 100, 108, 116, 124, 132, 149, 157};
    for (const int lower : kPairs) {
        if (channel == lower)
            return 1;
        if (channel == lower + 4)
            return -1;
    }
    return 0;
}

void printOperatingChannel(const RadioRecord& radio)
{
    if (radio.channel == 0 || radio.width != kWidth40MHz) {
        cli_printf("\tOper channel  : %d\n", radio.channel);
        return;
    }
    constexpr const char* kSigns[] = {"-", "?", "+"};
    const int offset = secondaryOffset(radio.is5GHz != 0, radio.channel);
    cli_printf("\tOper_channel  : %d%s%d\n", radio.channel, kSigns[offset + 1], radio.channel + 4 * offset);
}

/// Prints a list of channels, which continues in a new line when a line is full.
class WrappedList
{
public:
    void add(int channel)
    {
        constexpr int kFullColumn = 96;
        if (column_ >= kFullColumn)
            column_ = cli_printf("\n\t                ") + 7;
        column_ += cli_printf("%d, ", channel);
    }

private:
    int column_ = 24;
};

/// Calls `show` for each channel of the map. The last bit of the map stands for no channel.
template <typename Show>
void forEachChannel(const ChannelMap& map, Show show)
{
    constexpr int kChannelCount = 1023;
    for (int channel = 0; channel < kChannelCount; ++channel)
        if ((map[channel / 8] >> (channel % 8) & 1) != 0)
            show(channel);
}

void printRanges(const RadioRecord& radio)
{
    constexpr int kFirst5GHzChannel = 15;
    WrappedList list;
    cli_print("\tAC md_cap     : ");
    for (const ChannelRange& range : radio.acRanges) {
        if (range.first == 0)
            break;
        const int step = range.first < kFirst5GHzChannel ? 1 : 4;
        for (int i = 0; i < range.count; ++i)
            list.add(range.first + i * step);
    }
    cli_print("\n");
}

void printChannels(const char* heading, const ChannelMap& map)
{
    WrappedList list;
    cli_print(heading);
    forEachChannel(map, [&list](int channel) { list.add(channel); });
    cli_print("\n");
}

void printRadio(const RadioRecord& radio)
{
    cli_printf("\tCountry       : cfg=%.*s, oper=%.*s\n", countryLength(radio.configuredCountry),
               radio.configuredCountry, countryLength(radio.operatingCountry), radio.operatingCountry);
    if (radio.mode == RadioRecord::kDisabled) {
        cli_printf("\tRadio %d       : %s\r\n\r\n", radio.id, "Disabled");
        return;
    }
    cli_printf("\tRadio %d       : %s\n", radio.id, "AP");
    cli_printf("\tRadio type    : %s\n", typeName(radio.type));
    cli_printf("\tPS optimize   : %d\n", radio.powerSaveOptimisation);
    cli_printf("\t11g prot mode : %d\n", radio.protectionMode);
    cli_printf("\tHT20/40 coext : %d\n", radio.coexistence);
    cli_printf("\tBeacon intv   : %d\n", radio.beaconInterval);
    cli_printf("\tTx power(%%)   : %d\n", radio.txPower);
    // The VHT label is printed only if no other bit of the type is set. typeName() returns "11AC" with some other bits,
    // too.
    const bool isVht = radio.type == kVeryHighThroughput;
    if (isVht || (radio.type & kHighThroughput) != 0)
        cli_printf("\t%s mcs=%d gi=%s bw=%s\n", isVht ? "VHT param     :" : "HT param      :", radio.mcs,
                   enabledWord(radio.shortGuardInterval == 1), nameOf(kWidths, radio.width, "80MHz"));
    cli_printf("\tAck timeout   : %d\n", radio.ackTimeout);
    cli_printf("\tAC MAX dista  : %d ackt_2G=%d ackt_5G=%d\n", radio.maxDistance, ackTimeout(64, radio.maxDistance),
               ackTimeout(25, radio.maxDistance));
    cli_printf("\tAC chan       : num=%d age=%d\n", radio.acChannelNumber, radio.acChannelAge);
    cli_printf("\tChannel       : num=%d\n", radio.channelCount);
    printOperatingChannel(radio);
    printRanges(radio);
    printChannels("\tAC chan list  : ", radio.acChannels);
    printChannels("\tChan list     : ", radio.allowedChannels);
    printChannels("\tHW_chan list  : ", radio.hardwareChannels);
    cli_print("\tNOL list      : ");
    forEachChannel(radio.nonOccupancyChannels, [](int channel) { cli_printf("%d, ", channel); });
    cli_print("\n\n");
}

} // namespace

void printRadioInfo(std::span<const std::uint8_t> reply)
{
    const std::size_t count = reply.size() / sizeof(RadioRecord);
    for (std::size_t i = 0; i < count; ++i)
        printRadio(recordAt<RadioRecord>(reply, i * sizeof(RadioRecord)));
    cli_print("================================================== \n");
    cli_printf("\nTotal: %d\n", static_cast<int>(count));
}
