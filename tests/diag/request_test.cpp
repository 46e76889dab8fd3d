// What is asked of the daemon and of the driver, and what becomes of their answers.

#include <utility>

#include "tests/diag/fake_platform.h"
#include "tests/diag/record.h"

namespace
{

constexpr char kBusy[] = "System is busy, please try again.\n";

Message powerMessage(unsigned radio, unsigned percent, unsigned power)
{
    return {"1 0 7", Record(4).u8(0, radio).u8(1, percent).u16(2, power).bytes()};
}

/// Both radios at full power, and the country.
std::vector<Message> countryMessages(unsigned code, const std::string& name)
{
    return {powerMessage(0, 1, 100), powerMessage(1, 1, 100), {"1 0 6", Record(8).u16(2, code).text(4, name).bytes()}};
}

using RequestTest = FakePlatformTest;

} // namespace

TEST_F(RequestTest, QueriesTellWhetherThereIsAnAnswer)
{
    const std::string nothing = "================================================== \n\nTotal: 0\n";
    const struct {
        const char* line;
        int capacity;
        const char* header;
        std::string empty; ///< begin of what an empty reply shows
        std::string noAnswer;
    } queries[] = {
        {"get vap cfg-info", 22180, "1 0 1 22180 10000", "\nTotal: 0\n===", "System busy\n"},
        {"get wtp info", 2992, "1 0 2 2992 10000", "WTP Configuration\n", kBusy},
        {"get wtp stations", 65536, "1 0 3 65536 10000", nothing, nothing},
        {"get radio info", 65536, "1 0 5 65536 10000", nothing, "System busy\n"},
    };
    for (const auto& query : queries) {
        EXPECT_TRUE(run(query.line).starts_with(query.empty));
        Bytes& request = fakePlatform.sent.back().body;
        // The list of VAPs is asked for with a number, and with a byte that means nothing.
        request.back() = 0;
        EXPECT_EQ(fakePlatform.sent,
                  (std::vector{Message{query.header, Bytes{request[0] == 3 ? request[0] : Bytes::value_type{0}, 0}}}));
        EXPECT_EQ(fakePlatform.allocated, (std::vector{2, query.capacity}));
        for (const int result : {-1, 1}) {
            fakePlatform = {.channelResult = result};
            EXPECT_EQ(run(query.line), query.noAnswer);
        }
        for (const std::size_t buffers : {0, 1}) {
            fakePlatform = {.buffersLeft = buffers};
            EXPECT_EQ(run(query.line, -1), "");
            EXPECT_TRUE(fakePlatform.sent.empty());
        }
        fakePlatform = {};
    }
    // The station list shows what the reply buffer holds, whatever the result.
    fakePlatform = {.channelResult = -1, .answer = listOf(0x180, {})};
    EXPECT_EQ(run("get wtp stations"), changed(nothing, "0\n", "384\n"));
}

TEST_F(RequestTest, KeepsToTheReplyWhateverLengthIsReported)
{
    for (const auto& [length, total] :
         {std::pair{-5, "Total: 0\n"}, {2063, "Total: 0\n"}, {2147483647, "Total: 31\n"}}) {
        fakePlatform = {.answer = Bytes(2064, 2), .answerLength = length};
        EXPECT_TRUE(run("get radio info").ends_with(total));
    }
    // The last station that begins in the buffer ends outside of it.
    fakePlatform = {.answer = listOf(0x0000ff7f, {}), .answerLength = 65537};
    EXPECT_TRUE(run("get wtp stations").ends_with("\nTotal: 65407\n"));
}

TEST_F(RequestTest, DriverOperationsMayBeMissing)
{
    fakePlatform.interfaceUp = "wlan1";
    const std::string settings = "\tSSID        : NULL\n\tBroadSSID   : Disable\n\tTunnelMode  : TUNNEL\n"
                                 "\tAuthType    : Unknown\n\tRadioMode   : Unknown\n\tBeaconIntv  : -1\n"
                                 "\tFragThres   : -1\n\tRtsThres    : -1\n\tDTIM Period : -1\n"
                                 "\tCoexist     : Disable\n\tChannel     : -1\n\tCountryCode : Unknown\n";
    EXPECT_NE(run("get vap chipset-status").find("wlan1 enable\n" + settings + "wlan1-va0 disable\n"),
              std::string::npos);
}

TEST_F(RequestTest, PowerIsSentAsTyped)
{
    const std::pair<const char*, Message> cases[] = {
        {"txpower 0 50%", powerMessage(0, 1, 50)},     {"txpower 2 300", powerMessage(2, 0, 300)},
        {"txpower 257 65537", powerMessage(1, 0, 1)},  {"txpower -1 -2", powerMessage(255, 0, 0xfffe)},
        {"txpower 1x 20dBm%", powerMessage(1, 1, 20)}, {"txpower 0 99999999999999999999", powerMessage(0, 0, 0xffff)},
    };
    for (const auto& [line, message] : cases) {
        EXPECT_EQ(run(line), "");
        EXPECT_EQ(fakePlatform.sent.back(), message) << line;
    }
    for (const char* line : {"txpower 0 abc", "txpower x 10", "txpower 0 %50"})
        EXPECT_EQ(run(line), "");
    EXPECT_EQ(fakePlatform.sent.size(), std::size(cases));

    fakePlatform = {.channelResult = 1};
    EXPECT_EQ(run("txpower 0 10"), kBusy);
    fakePlatform.buffersLeft = 0;
    EXPECT_EQ(run("txpower 0 10", -1), "");
}

TEST_F(RequestTest, CountryIsSentWithFullPower)
{
    for (const char* tool : {"ifconfig", "iwpriv"})
        plantRecorder(tool);
    EXPECT_EQ(run("country JAPAN"), "");
    EXPECT_EQ(fakePlatform.sent, countryMessages(392, "JAP"));
    fakePlatform = {.region = 'E'};
    EXPECT_EQ(run("country"), "");
    EXPECT_EQ(fakePlatform.regionAsked, "E");
    EXPECT_EQ(fakePlatform.sent, countryMessages(840, "US"));
    fakePlatform = {.channelResult = -1};
    EXPECT_EQ(run("country US"), std::string(kBusy) + kBusy + kBusy);
    fakePlatform = {.buffersLeft = 2};
    EXPECT_EQ(run("country US", -1), "");
}

TEST_F(RequestTest, TheScanBufferGrowsTwice)
{
    const struct {
        const char* line;
        int needs;
        std::vector<std::string> scans;
    } cases[] = {
        {"getscan 0", 16384, {"wlan0 16384"}},
        {"getscan -1", 16385, {"wlan0 16384", "wlan0 32768"}},
        {"getscan 7", 65535, {"wlan1 16384", "wlan1 32768", "wlan1 65535"}},
        {"getscan 1", 65536, {"wlan1 16384", "wlan1 32768", "wlan1 65535"}},
    };
    for (const auto& test : cases) {
        fakePlatform = {.scanNeeds = test.needs};
        EXPECT_EQ(run(test.line), "") << test.line;
        EXPECT_EQ(fakePlatform.scans, test.scans) << test.line;
    }
}
