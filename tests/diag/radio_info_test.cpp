#include "diag/radio_info.h"

#include "tests/diag/record.h"

namespace
{

constexpr std::size_t kSize = sizeof(RadioRecord);
constexpr std::size_t kRanges = offsetof(RadioRecord, acRanges);
constexpr std::size_t kAcChannels = offsetof(RadioRecord, acChannels);
constexpr std::size_t kAllowedChannels = offsetof(RadioRecord, allowedChannels);
constexpr std::size_t kHardwareChannels = offsetof(RadioRecord, hardwareChannels);
constexpr std::size_t kNonOccupancy = offsetof(RadioRecord, nonOccupancyChannels);

Record plainRadio()
{
    Record radio(kSize);
    radio.u8(0, 1).u8(2, 1).u32(88, 3).u32(92, 0xfffffffe).u16(232, 1000).u16(236, 0x5008).u8(238, 1);
    radio.text(239, "US").text(243, "DE0").u8(252, 4).u8(253, 5).u8(254, 1).u8(255, 100).u16(258, 65535).u8(260, 15);
    radio.u8(261, 1).u8(262, 0).u8(263, 64).u8(264, 24).u8(265, 36);
    radio.u16(kRanges + 2, 36).u16(kRanges + 4, 4).u16(kRanges + 10, 1).u16(kRanges + 12, 3);
    radio.channels(kAcChannels, 36, 2, 4).channels(kAllowedChannels, 7, 2).channels(kHardwareChannels, 0, 2, 1022);
    return radio.channels(kNonOccupancy, 100, 2, 4);
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

std::string showRadio(const Record& radio)
{
    return screenOf(printRadioInfo, radio.bytes());
}

/// "100, 101, " from `first` on.
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

    std::vector<std::uint8_t> reply = plainRadio().bytes();
    const std::vector<std::uint8_t> second = plainRadio().u8(0, 200).u8(2, 2).text(239, "1Qqx").bytes();
    reply.insert(reply.end(), second.begin(), second.end());
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
        unsigned bits;
        const char* name;
        const char* parameters; ///< null: none
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
        EXPECT_EQ(showRadio(plainRadio().u16(236, type.bits)), expected) << type.bits;
    }
}

TEST(RadioInfo, ComputesAcknowledgementTimeouts)
{
    const std::pair<unsigned, const char*> kCases[] = {
        {0, "0 ackt_2G=64 ackt_5G=25"},     {99, "99 ackt_2G=64 ackt_5G=25"},
        {100, "100 ackt_2G=65 ackt_5G=26"}, {151, "151 ackt_2G=65 ackt_5G=26"},
        {152, "152 ackt_2G=66 ackt_5G=27"}, {65535, "65535 ackt_2G=497 ackt_5G=458"},
    };
    for (const auto& [metres, shown] : kCases)
        EXPECT_EQ(showRadio(plainRadio().u16(232, metres)), changed(kPlainScreen, "1000 ackt_2G=71 ackt_5G=32", shown));
}

TEST(RadioInfo, ShowsTheSecondaryChannelAt40MHz)
{
    // What a radio shows on every channel that has a secondary channel.
    const auto pairs = [](unsigned band) {
        std::string all;
        for (unsigned channel = 1; channel < 256; ++channel) {
            const std::string screen = showRadio(plainRadio().u8(262, 1).u8(265, channel).u8(238, band));
            const std::size_t at = screen.find("\tOper_channel  : ") + 17;
            const std::string pair = screen.substr(at, screen.find('\n', at) - at + 1);
            all += pair.find('?') == std::string::npos ? pair : "";
        }
        return all;
    };
    EXPECT_EQ(pairs(0), "1+5\n2+6\n3+7\n4+8\n5+9\n6+10\n7+11\n8-4\n9-5\n10-6\n11-7\n12-8\n13-9\n14-10\n");
    for (const unsigned band : {1U, 255U})
        EXPECT_EQ(pairs(band), "36+40\n40-36\n44+48\n48-44\n52+56\n56-52\n60+64\n64-60\n100+104\n104-100\n108+112\n"
                               "112-108\n116+120\n120-116\n124+128\n128-124\n132+136\n136-132\n149+153\n153-149\n"
                               "157+161\n161-157\n");
}

TEST(RadioInfo, ShowsWhatDependsOnAField)
{
    const std::string ranges = "36, 40, 44, 48, 1, 2, 3, ";
    const Display wide{showRadio, plainRadio().u8(262, 1), changed(kPlainScreen, "20MHz", "40MHz")};
    wide.expectVariants({
        {[](Record& r) { r.u8(265, 140); }, "Oper channel  : 36", "Oper_channel  : 140?140"},
        {[](Record& r) { r.u8(265, 0); }, "Oper channel  : 36", "Oper channel  : 0"},
    });
    Display{showRadio, plainRadio(), kPlainScreen}.expectVariants({
        {[](Record& r) { r.u8(262, 255); }, "20MHz", "80MHz"},
        {[](Record& r) { r.u8(2, 3).u8(261, 2); }, "gi=enabled", "gi=disabled"},
        {[](Record& r) { r.text(239, "azAZ").text(243, "ZZZZ"); }, "cfg=US, oper=DE", "cfg=azAZ, oper=ZZZZ"},
        {[](Record& r) { r.text(239, "[@`{").text(243, "D\xc4  "); }, "cfg=US, oper=DE", "cfg=, oper=D"},
        // The first range without a first channel is the last.
        {[](Record& r) { r.u16(kRanges + 2, 0); }, ranges, ""},
        {[](Record& r) { r.u16(kRanges + 4, 0); }, ranges, "1, 2, 3, "},
        {[](Record& r) {
             r.u16(kRanges + 2, 14).u16(kRanges + 4, 2).u16(kRanges + 10, 15).u16(kRanges + 12, 2);
             for (std::size_t k = 2; k < 8; ++k)
                 r.u16(kRanges + k * 8 + 2, 65535).u16(kRanges + k * 8 + 4, k == 7 ? 2 : 0);
         },
         ranges, "14, 15, 15, 19, 65535, 65539, "},
        // The last bit of a map is no channel.
        {[](Record& r) { r.channels(kNonOccupancy, 0, 2, 1022).channels(kNonOccupancy, 1023, 1); }, "100, 104, ",
         "0, 100, 104, 1022, "},
    });
}

TEST(RadioInfo, WrapsListsBetweenItems)
{
    const std::string twoLines = channelItems(101, 15) + kWrap + channelItems(116, 15);
    Display{showRadio, plainRadio(), kPlainScreen}.expectVariants({
        // From column 24 an item of 5 ends at 94 fourteen times and at 99 fifteen times; a wrapped line begins at 25.
        {[](Record& r) { r.u16(kAcChannels + 4, 0).channels(kAcChannels, 101, 30); }, "list  : 36, 40, ",
         "list  : " + twoLines},
        {[](Record& r) { r.u16(kAcChannels + 4, 0).channels(kAcChannels, 101, 31); }, "list  : 36, 40, ",
         "list  : " + twoLines + kWrap + "131, "},
        // Items of 4 end at exactly 96 after eighteen. Four of 4 and eleven of 5 end there in a wrapped line, though
        // they would end at 95 in the first.
        {[](Record& r) { r.u16(kAllowedChannels, 0).channels(kAllowedChannels, 78, 34); }, "7, 8, \n",
         channelItems(78, 18) + kWrap + channelItems(96, 15) + kWrap + "111, \n"},
        // The column runs on across the controller's ranges: 24, four items of 4, then items of 5.
        {[](Record& r) { r.u16(kRanges + 10, 100).u16(kRanges + 12, 13); }, "36, 40, 44, 48, 1, 2, 3, ",
         "36, 40, 44, 48, " + channelItems(100, 12, 4) + kWrap + "148, "},
        // The list of radar-hit channels never wraps.
        {[](Record& r) { r.channels(kNonOccupancy, 100, 200); }, "100, 104, ", channelItems(100, 200)},
    });
}
