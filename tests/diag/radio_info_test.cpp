#include "diag/radio_info.h"

#include "tests/diag/record.h"

namespace
{

constexpr std::size_t kSize = sizeof(RadioRecord);
constexpr std::size_t kAcChannels = offsetof(RadioRecord, acChannels);
constexpr std::size_t kAllowedChannels = offsetof(RadioRecord, allowedChannels);
constexpr std::size_t kHardwareChannels = offsetof(RadioRecord, hardwareChannels);
constexpr std::size_t kNonOccupancy = offsetof(RadioRecord, nonOccupancyChannels);

constexpr std::size_t range(std::size_t index)
{
    return offsetof(RadioRecord, acRanges) + sizeof(ChannelRange) * index;
}

Record plainRadio()
{
    Record radio(kSize);
    radio.u8(0, 1).u8(2, 1).u32(88, 3).u32(92, 0xfffffffe).u16(232, 1000).u16(236, 0x5008).u8(238, 1);
    radio.text(239, "US").text(243, "DE0").u8(252, 4).u8(253, 5).u8(254, 1).u8(255, 100).u16(258, 65535).u8(260, 15);
    radio.u8(261, 1).u8(262, 0).u8(263, 64).u8(264, 24).u8(265, 36);
    radio.u16(range(0) + 2, 36).u16(range(0) + 4, 4).u16(range(1) + 2, 1).u16(range(1) + 4, 3);
    radio.channels(kAcChannels, {36, 40}).channels(kAllowedChannels, {1, 7, 8}).channels(kHardwareChannels, {0, 1022});
    radio.channels(kNonOccupancy, {100, 104});
    return radio;
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
                                "\tChan list     : 1, 7, 8, \n"
                                "\tHW_chan list  : 0, 1022, \n"
                                "\tNOL list      : 100, 104, \n"
                                "\n";

std::string radioScreen(std::size_t total, const std::string& radios)
{
    return radios + std::string(50, '=') + " \n\nTotal: " + std::to_string(total) + "\n";
}

std::string radioWith(const std::function<void(Record&)>& set)
{
    Record radio = plainRadio();
    set(radio);
    return screenOf(printRadioInfo, radio.bytes());
}

void expectVariants(const std::vector<Variant>& variants)
{
    const auto show = [](const Record& radio) {
        return screenOf(printRadioInfo, radio.bytes());
    };
    expectVariants(show, plainRadio(), radioScreen(1, kPlainRadio), variants);
}

/// "100, 101, " from `first` on.
std::string channelItems(unsigned first, unsigned count, unsigned step = 1)
{
    std::string items;
    for (unsigned i = 0; i < count; ++i)
        items += std::to_string(first + i * step) + ", ";
    return items;
}

/// Marks the channels from `first` on.
void setChannels(Record& radio, std::size_t offset, unsigned first, unsigned count)
{
    for (unsigned i = 0; i < count; ++i)
        radio.channels(offset, {first + i});
}

const std::string kWrap = "\n\t                ";

} // namespace

TEST(RadioInfo, ShowsWholeRecordsAndTheirNumber)
{
    EXPECT_EQ(screenOf(printRadioInfo, plainRadio().bytes()), radioScreen(1, kPlainRadio));

    std::vector<std::uint8_t> reply = plainRadio().bytes();
    const std::vector<std::uint8_t> second = plainRadio().u8(0, 200).u8(2, 2).text(239, "1Qqx").bytes();
    reply.insert(reply.end(), second.begin(), second.end());
    reply.resize(4200);
    const std::string disabled = "\tCountry       : cfg=, oper=DE\n\tRadio 200       : Disabled\r\n\r\n";
    EXPECT_EQ(screenOf(printRadioInfo, reply), radioScreen(2, kPlainRadio + disabled));
    for (const std::size_t length : {std::size_t{0}, kSize - 1})
        EXPECT_EQ(screenOf(printRadioInfo, std::span(reply).first(length)), radioScreen(0, ""));
    EXPECT_EQ(screenOf(printRadioInfo, std::span(reply).first(kSize * 2 - 1)), radioScreen(1, kPlainRadio));
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
        std::string expected = changed(kPlainRadio, "11N_5G", type.name);
        if (type.parameters == nullptr)
            expected = changed(expected, line, "");
        else if (type.parameters == std::string("VHT"))
            expected = changed(expected, "HT param      :", "VHT param     :");
        EXPECT_EQ(radioWith([&](Record& r) { r.u16(236, type.bits); }), radioScreen(1, expected)) << type.bits;
    }
}

TEST(RadioInfo, ComputesAcknowledgementTimeouts)
{
    const auto variant = [](unsigned metres, const std::string& shown) {
        return Variant{[=](Record& r) { r.u16(232, metres); }, "1000 ackt_2G=71 ackt_5G=32",
                       std::to_string(metres) + shown};
    };
    expectVariants({
        variant(0, " ackt_2G=64 ackt_5G=25"),
        variant(151, " ackt_2G=65 ackt_5G=26"),
        variant(152, " ackt_2G=66 ackt_5G=27"),
        variant(65535, " ackt_2G=497 ackt_5G=458"),
    });
}

TEST(RadioInfo, ShowsTheSecondaryChannelAt40MHz)
{
    // What a radio shows on every channel, those without a secondary channel ("140?140") left out.
    const auto pairs = [](unsigned band) {
        std::string all;
        for (unsigned channel = 1; channel < 256; ++channel) {
            const auto set = [=](Record& r) {
                r.u8(262, 1).u8(265, channel).u8(238, band);
            };
            const std::string screen = radioWith(set);
            const std::size_t at = screen.find("\tOper_channel  : ") + 17;
            const std::string pair = screen.substr(at, screen.find('\n', at) - at);
            const std::string number = std::to_string(channel);
            if (pair != number + "?" + number)
                all += pair + " ";
        }
        return all;
    };
    EXPECT_EQ(pairs(0), "1+5 2+6 3+7 4+8 5+9 6+10 7+11 8-4 9-5 10-6 11-7 12-8 13-9 14-10 ");
    for (const unsigned band : {1U, 255U})
        EXPECT_EQ(pairs(band), "36+40 40-36 44+48 48-44 52+56 56-52 60+64 64-60 100+104 104-100 108+112 112-108 "
                               "116+120 120-116 124+128 128-124 132+136 136-132 149+153 153-149 157+161 161-157 ");

    const auto setWidth = [](unsigned width, unsigned channel) {
        return [=](Record& r) {
            r.u8(262, width).u8(265, channel);
        };
    };
    const std::string wide = changed(kPlainRadio, "20MHz", "40MHz");
    EXPECT_EQ(radioWith(setWidth(1, 140)),
              radioScreen(1, changed(wide, "Oper channel  : 36", "Oper_channel  : 140?140")));
    EXPECT_EQ(radioWith(setWidth(1, 0)), radioScreen(1, changed(wide, "Oper channel  : 36", "Oper channel  : 0")));
    expectVariants({{setWidth(255, 36), "20MHz", "80MHz"}});
}

TEST(RadioInfo, ShowsWhatDependsOnAField)
{
    expectVariants({
        {[](Record& r) { r.u8(261, 2); }, "gi=enabled", "gi=disabled"},
        {[](Record& r) { r.text(239, "azAZ").text(243, "ZZZZ"); }, "cfg=US, oper=DE", "cfg=azAZ, oper=ZZZZ"},
        {[](Record& r) { r.text(239, "[@`{").text(243, "D\xc4  "); }, "cfg=US, oper=DE", "cfg=, oper=D"},
        // The first range without a first channel is the last.
        {[](Record& r) { r.u16(range(0) + 2, 0); }, "36, 40, 44, 48, 1, 2, 3, ", ""},
        {[](Record& r) { r.u16(range(0) + 4, 0); }, "36, 40, 44, 48, 1, 2, 3, ", "1, 2, 3, "},
        {[](Record& r) {
             r.u16(range(0) + 2, 14).u16(range(0) + 4, 2).u16(range(1) + 2, 15).u16(range(1) + 4, 2);
             for (std::size_t k = 2; k < 8; ++k)
                 r.u16(range(k) + 2, static_cast<unsigned>(65534 + k / 7)).u16(range(k) + 4, k == 7 ? 2 : 0);
         },
         "36, 40, 44, 48, 1, 2, 3, ", "14, 15, 15, 19, 65535, 65539, "},
        // The last bit of a map is no channel.
        {[](Record& r) {
             r.channels(kNonOccupancy, {0, 1022, 1023}).channels(kHardwareChannels, {1023});
         },
         "100, 104, ", "0, 100, 104, 1022, "},
    });
}

TEST(RadioInfo, WrapsListsBetweenItems)
{
    // From column 24 an item of 5 ends at 94 fourteen times and at 99 fifteen times; a wrapped line begins at 25.
    const std::string twoLines = channelItems(101, 15) + kWrap + channelItems(116, 15);
    for (const unsigned count : {30U, 31U}) {
        const auto set = [=](Record& r) {
            r.u16(kAcChannels + 4, 0);
            setChannels(r, kAcChannels, 101, count);
        };
        expectVariants({{set, "list  : 36, 40, ", "list  : " + twoLines + (count == 30 ? "" : kWrap + "131, ")}});
    }

    expectVariants({
        // Items of 4 end at exactly 96 after eighteen. Four of 4 and eleven of 5 end there in a wrapped line, though
        // they would end at 95 in the first.
        {[](Record& r) {
             r.u16(kAllowedChannels, 0);
             setChannels(r, kAllowedChannels, 78, 34);
         },
         "1, 7, 8, ", channelItems(78, 18) + kWrap + channelItems(96, 15) + kWrap + "111, "},
        // The column runs on across the controller's ranges: 24, four items of 4, then items of 5.
        {[](Record& r) { r.u16(range(1) + 2, 100).u16(range(1) + 4, 13); }, "36, 40, 44, 48, 1, 2, 3, ",
         "36, 40, 44, 48, " + channelItems(100, 12, 4) + kWrap + "148, "},
        // The list of radar-hit channels never wraps.
        {[](Record& r) { setChannels(r, kNonOccupancy, 100, 200); }, "100, 104, ", channelItems(100, 200)},
    });
}
