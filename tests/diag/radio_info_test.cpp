#include "diag/radio_info.h"

#include "tests/diag/record.h"

namespace
{

using std::ranges::fill;

constexpr std::size_t kSize = sizeof(RadioRecord);

RadioRecord plainRadio()
{
    RadioRecord r{};
    set(r.configuredCountry, "US"), set(r.operatingCountry, "DE0"), r.id = 1, r.mode = 1, r.type = 0x5008, r.is5GHz = 1;
    r.powerSaveOptimisation = 4, r.protectionMode = 5, r.coexistence = 1, r.beaconInterval = 65535, r.txPower = 100;
    r.mcs = 15, r.shortGuardInterval = 1, r.width = 0, r.ackTimeout = 64, r.maxDistance = 1000;
    r.acChannelNumber = 3, r.acChannelAge = -2, r.channelCount = 24, r.channel = 36;
    r.acRanges[0].first = 36, r.acRanges[0].count = 4, r.acRanges[1].first = 1, r.acRanges[1].count = 3;
    mark(r.acChannels, 36, 2, 4), mark(r.allowedChannels, 7, 2), mark(r.hardwareChannels, 0, 2, 1022);
    // No channel belongs to the last bit of a map.
    mark(r.nonOccupancyChannels, 100, 2, 4), mark(r.nonOccupancyChannels, 1023, 1);
    return r;
}

const std::string kPlainRadio = "\tCountry       : cfg=US, oper=DE\n"
                                "\tRadio 1       : AP\n"
                                "\tRadio type    : 11N_5G\n"
                                "\tPS optimize   : 4\n"
                                "\t11g prot mode : 5\n"
                                "\tHT20/40 coext : 1\n"
                                "\tBeacon intv   : 65535\n"
                                "\tTx power(%)   : 100\n"
                                "\tHT param      : mcs=15 gi=enabled bw=20MHz\n"
                                "\tAck timeout   : 64\n"
                                "\tAC MAX dista  : 1000 ackt_2G=71 ackt_5G=32\n"
                                "\tAC chan       : num=3 age=-2\n"
                                "\tChannel       : num=24\n"
                                "\tOper channel  : 36\n"
                                "\tAC md_cap     : 36, 40, 44, 48, 1, 2, 3, \n"
                                "\tAC chan list  : 36, 40, \n"
                                "\tChan list     : 7, 8, \n"
                                "\tHW_chan list  : 0, 1022, \n"
                                "\tNOL list      : 100, 104, \n"
                                "\n";

std::string radioScreen(std::size_t total, const std::string& radios)
{
    return radios + std::string(50, '=') + " \n\nTotal: " + std::to_string(total) + "\n";
}

const std::string kPlainScreen = radioScreen(1, kPlainRadio);

std::string showRadio(const RadioRecord& radio)
{
    return screenOf(printRadioInfo, bytesOf(std::vector{radio}));
}

/// A list of channels from `first` on, such as "100, 101, ".
std::string channelItems(unsigned first, unsigned count, unsigned step = 1)
{
    std::string items;
    for (unsigned i = 0; i < count; ++i)
        items += std::to_string(first + i * step) + ", ";
    return items;
}

const std::string kWrap = "\n\t                ";

} // namespace

TEST(RadioInfo, ShowsWholeRecordsAndTheirNumber)
{
    EXPECT_EQ(showRadio(plainRadio()), kPlainScreen);

    const auto second = with(plainRadio(), [](auto& r) { r.id = 200, r.mode = 2, set(r.configuredCountry, "1Qqx"); });
    std::vector<std::uint8_t> reply = bytesOf(std::vector{plainRadio(), second});
    reply.resize(4200);
    const std::string disabled = "\tCountry       : cfg=, oper=DE\n\tRadio 200       : Disabled\r\n\r\n";
    EXPECT_EQ(screenOf(printRadioInfo, reply), radioScreen(2, kPlainRadio + disabled));
    EXPECT_EQ(screenOf(printRadioInfo, std::span(reply).first(kSize * 2 - 1)), kPlainScreen);
    for (const std::size_t length : {std::size_t{0}, kSize - 1})
        EXPECT_EQ(screenOf(printRadioInfo, std::span(reply).first(length)), radioScreen(0, ""));
}

TEST(RadioInfo, NamesTheTypeByTheFirstRuleThatMatches)
{
    const struct {
        std::uint16_t bits;
        const char* name;
        const char* parameters; ///< how the line of parameters begins; null: the line is not shown
    } kTypes[] = {
        {0x0000, "invalid", nullptr}, {0x0002, "11A", nullptr}, {0x0001, "11B", nullptr},  {0x0004, "11G", nullptr},
        {0x0010, "11AC", "VHT"},      {0x0018, "11AC", "HT"},   {0x0030, "11AC", nullptr}, {0x2008, "11N_2.4G", "HT"},
        {0x7008, "11N_2.4G", "HT"},   {0x1008, "11N", "HT"},    {0x4008, "11N", "HT"},     {0xffff, "11A", "HT"},
        {0xfffd, "11B", "HT"},        {0xfffc, "11G", "HT"},    {0xfff8, "11AC", "HT"},    {0xf000, "invalid", nullptr},
    };
    const std::string line = "\tHT param      : mcs=15 gi=enabled bw=20MHz\n";
    for (const auto& type : kTypes) {
        std::string expected = changed(kPlainScreen, "11N_5G", type.name);
        if (type.parameters == nullptr)
            expected = changed(expected, line, "");
        else if (type.parameters == std::string("VHT"))
            expected = changed(expected, "HT param      :", "VHT param     :");
        EXPECT_EQ(showRadio(with(plainRadio(), [&](auto& r) { r.type = type.bits; })), expected) << type.bits;
    }
}

TEST(RadioInfo, ComputesAcknowledgementTimeouts)
{
    const std::pair<std::uint16_t, const char*> kCases[] = {
        {0, "0 ackt_2G=64 ackt_5G=25"},     {99, "99 ackt_2G=64 ackt_5G=25"},
        {100, "100 ackt_2G=65 ackt_5G=26"}, {151, "151 ackt_2G=65 ackt_5G=26"},
        {152, "152 ackt_2G=66 ackt_5G=27"}, {65535, "65535 ackt_2G=497 ackt_5G=458"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(showRadio(with(plainRadio(), [&](auto& r) { r.maxDistance = test.first; })),
                  changed(kPlainScreen, "1000 ackt_2G=71 ackt_5G=32", test.second));
}

TEST(RadioInfo, ShowsTheSecondaryChannelAt40MHz)
{
    // The display of every channel that has a secondary channel.
    const auto pairs = [](std::uint8_t band) {
        std::string all;
        for (std::uint8_t n = 1; n != 0; ++n) {
            const auto screen =
                showRadio(with(plainRadio(), [&](auto& r) { r.width = 1, r.channel = n, r.is5GHz = band; }));
            const std::size_t at = screen.find("\tOper_channel  : ") + 17;
            const std::string pair = screen.substr(at, screen.find('\n', at) - at + 1);
            all += pair.find('?') == std::string::npos ? pair : "";
        }
        return all;
    };
    EXPECT_EQ(pairs(0), "1+5\n2+6\n3+7\n4+8\n5+9\n6+10\n7+11\n8-4\n9-5\n10-6\n11-7\n12-8\n13-9\n14-10\n");
    for (const auto band : std::initializer_list<std::uint8_t>{1, 255})
        EXPECT_EQ(pairs(band), "36+40\n40-36\n44+48\n48-44\n52+56\n56-52\n60+64\n64-60\n100+104\n104-100\n108+112\n"
                               "112-108\n116+120\n120-116\n124+128\n128-124\n132+136\n136-132\n149+153\n153-149\n"
                               "157+161\n161-157\n");
}

TEST(RadioInfo, ShowsWhatDependsOnAField)
{
    const std::string ranges = "36, 40, 44, 48, 1, 2, 3, ";
    const RadioRecord wide = with(plainRadio(), [](auto& r) { r.width = 1; });
    Display<RadioRecord>{showRadio, wide, changed(kPlainScreen, "20MHz", "40MHz")}.expectVariants({
        {[](auto& r) { r.channel = 140; }, "Oper channel  : 36", "Oper_channel  : 140?140"},
        {[](auto& r) { r.channel = 0; }, "Oper channel  : 36", "Oper channel  : 0"},
    });
    Display<RadioRecord>{showRadio, plainRadio(), kPlainScreen}.expectVariants({
        {[](auto& r) { r.width = 255; }, "20MHz", "80MHz"},
        {[](auto& r) { r.mode = 3, r.shortGuardInterval = 2; }, "gi=enabled", "gi=disabled"},
        {[](auto& r) { set(r.configuredCountry, "azAZ"), set(r.operatingCountry, "ZZZZ"); }, "cfg=US, oper=DE",
         "cfg=azAZ, oper=ZZZZ"},
        {[](auto& r) { set(r.configuredCountry, "[@`{"), set(r.operatingCountry, "D\xc4  "); }, "cfg=US, oper=DE",
         "cfg=, oper=D"},
        // A range whose first channel is 0 ends the list.
        {[](auto& r) { r.acRanges[0].first = 0; }, ranges, ""},
        {[](auto& r) { r.acRanges[0].count = 0; }, ranges, "1, 2, 3, "},
        {[](auto& r) {
             r.acRanges[0].first = 14, r.acRanges[0].count = 2, r.acRanges[1].first = 15, r.acRanges[1].count = 2;
             for (int k = 2; k < 8; ++k)
                 r.acRanges[k].first = 65535, r.acRanges[k].count = k == 7 ? 2 : 0;
         },
         ranges, "14, 15, 15, 19, 65535, 65539, "},
        {[](auto& r) { mark(r.nonOccupancyChannels, 0, 2, 1022); }, "100, 104, ", "0, 100, 104, 1022, "},
    });
}

TEST(RadioInfo, WrapsListsBetweenItems)
{
    const std::string lines = channelItems(101, 15) + kWrap + channelItems(116, 15);
    Display<RadioRecord>{showRadio, plainRadio(), kPlainScreen}.expectVariants({
        // A line is full at column 96. The first line begins at column 24. With 14 items of 5 characters it ends at
        // column 94, so it takes a 15th item. A wrapped line begins at column 25, so it takes 15 items too.
        {[](auto& r) { fill(r.acChannels, 0), mark(r.acChannels, 101, 30); }, "36, 40, \n", lines + "\n"},
        {[](auto& r) { fill(r.acChannels, 0), mark(r.acChannels, 101, 31); }, "36, 40, \n", lines + kWrap + "131, \n"},
        // In the first line, 18 items of 4 characters end at column 96, so the line is full. In the wrapped line, 4
        // items of 4 characters and 11 items of 5 end at column 96 too. In a first line they would end at column 95.
        {[](auto& r) { fill(r.allowedChannels, 0), mark(r.allowedChannels, 78, 34); }, "7, 8, \n",
         channelItems(78, 18) + kWrap + channelItems(96, 15) + kWrap + "111, \n"},
        // All ranges of the controller are one list, so the second range continues in the column where the first one
        // ended. The line has 4 items of 4 characters and 12 items of 5, and ends at column 100.
        {[](auto& r) { r.acRanges[1].first = 100, r.acRanges[1].count = 13; }, "36, 40, 44, 48, 1, 2, 3, ",
         "36, 40, 44, 48, " + channelItems(100, 12, 4) + kWrap + "148, "},
        // The list of radar-hit channels never wraps.
        {[](auto& r) { mark(r.nonOccupancyChannels, 100, 200); }, "100, 104, ", channelItems(100, 200)},
    });
}
