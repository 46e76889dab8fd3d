#include "diag/get_tree.h"

#include <cstdio>
#include <cstring>
#include <span>
#include <utility>

#include "diag/exchange.h"
#include "diag/wireless.h"
#include "tests/diag/fake_platform.h"
#include "tests/diag/record.h"
#include "tests/support/words.h"

namespace
{

class GetTree : public FakePlatformTest
{
protected:
    /// What the line `get GROUP LEAF` says; the command's result must be as expected.
    static std::string screen(const std::string& line, int expectedResult = 0)
    {
        Words words(line);
        words_ = words.argv();
        for (const cli_node& node : getTable)
            for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount)))
                if (line == std::string("get ") + node.name + " " + child.name)
                    return run(child.handler, words.argc(), words_, expectedResult);
        return "no such command";
    }

    static inline char** words_ = nullptr; ///< of the last line
};

bool isRadio(const char* interface)
{
    return std::strlen(interface) == 5;
}

/// A driver's answer for a radio, and for a virtual interface where that differs.
template <int Radio, int Virtual = Radio>
int answer(const char* interface)
{
    return isRadio(interface) ? Radio : Virtual;
}

int authType;

wlan_api driver()
{
    wlan_api api{};
    api.get_coexist = answer<-1>;
    api.get_radio_mode = [](const char* interface, char* buffer) {
        std::strcpy(buffer, "11NGHT40");
        return isRadio(interface) ? 0 : -1;
    };
    api.get_channel = answer<11>;
    api.get_beacon_interval = answer<100>;
    api.get_dtim_period = answer<1>;
    api.get_rts_threshold = answer<2347>;
    api.get_frag_threshold = answer<2346>;
    // A text that fills the buffer, without a terminator, or an empty one.
    api.get_ssid = [](const char* interface, char* buffer, int size) {
        return static_cast<const char*>(
            std::memset(buffer, isRadio(interface) ? 's' : '\0', static_cast<std::size_t>(size)));
    };
    api.get_broadcast_ssid = answer<2, 0>;
    api.get_country = [](const char*, char* buffer, int size) {
        return std::snprintf(buffer, static_cast<std::size_t>(size), "US") - 2;
    };
    api.get_local_bridging = answer<0, 1>;
    api.get_auth_type = [](const char*) {
        return authType;
    };
    return api;
}

} // namespace

TEST_F(GetTree, AsksTheDaemon)
{
    const std::string nothing = "================================================== \n\nTotal: 0\n";
    const struct {
        const char* line;
        int capacity;
        const char* header;
        std::string empty; ///< begin of what an empty reply shows
        std::string noAnswer;
    } kQueries[] = {
        {"get vap cfg-info", 22180, "1 0 1 22180 10000", "\nTotal: 0\n===", "System busy\n"},
        {"get wtp info", 2992, "1 0 2 2992 10000", "WTP Configuration\n", "System is busy, please try again.\n"},
        {"get wtp stations", 65536, "1 0 3 65536 10000", nothing, nothing},
        {"get radio info", 65536, "1 0 5 65536 10000", nothing, "System busy\n"},
    };
    for (const auto& query : kQueries) {
        fakePlatform = {};
        EXPECT_TRUE(screen(query.line).starts_with(query.empty));
        const Bytes vapRequest = {3, static_cast<std::uint8_t>(reinterpret_cast<std::uintptr_t>(words_))};
        const bool asksForVaps = &query == kQueries;
        EXPECT_EQ(fakePlatform.sent, (std::vector{Message{query.header, asksForVaps ? vapRequest : Bytes{0, 0}}}));
        EXPECT_EQ(fakePlatform.allocated, (std::vector{2, query.capacity}));
        for (const int result : {-1, 1}) {
            fakePlatform = {.channelResult = result};
            EXPECT_EQ(screen(query.line), query.noAnswer);
        }
        for (const std::size_t buffers : {0, 1}) {
            fakePlatform = {.buffersLeft = buffers};
            EXPECT_EQ(screen(query.line, -1), "");
            EXPECT_TRUE(fakePlatform.sent.empty());
        }
    }
    // The station list shows what the reply buffer holds, whatever the result.
    fakePlatform = {.channelResult = -1, .answer = listOf(0x180, {})};
    EXPECT_EQ(screen("get wtp stations"), changed(nothing, "0\n", "384\n"));
}

TEST_F(GetTree, KeepsToTheReplyWhateverLengthIsReported)
{
    for (const auto& [length, total] :
         {std::pair{-5, "Total: 0\n"}, {2063, "Total: 0\n"}, {2147483647, "Total: 31\n"}}) {
        fakePlatform = {.answer = Bytes(2064, 2), .answerLength = length};
        EXPECT_TRUE(screen("get radio info").ends_with(total));
    }
    // The last station that begins in the buffer ends outside of it.
    fakePlatform = {.answer = listOf(0x0000ff7f, {}), .answerLength = 65537};
    EXPECT_TRUE(screen("get wtp stations").ends_with("\nTotal: 65407\n"));
}

TEST_F(GetTree, ShowsTheVersion)
{
    const std::string text = "=================================================================\n"
                             "\tSystem Version: Quillon-K91MV-5.04-AP-build0241-220118-patch4\n"
                             "\tBuild Label   : GA\n"
                             "\tBuild Date    : 220118\n"
                             "\tBuild Type    : Release\n"
                             "\tSerial Number : \n"
                             "\tStartup Time  : \n"
                             "==================================================================\n";
    EXPECT_EQ(screen("get system version"), text);
    fakePlatform.serialNumber = "QK31012345678901";
    EXPECT_EQ(screen("get system version"), changed(text, "Number : ", "Number : QK31012345678901"));
}

TEST_F(GetTree, ShowsLoadAndCloud)
{
    EXPECT_EQ(screen("get system performance"), "cpu usage rate: 7%\nmemory usage rate: 100%\n"
                                                " 10:00:00 up 3 days, load average: 0.00\n");
    plantTool("cw_diag", "echo \"qsky: $*\"");
    EXPECT_EQ(screen("get qsky info"), "qsky: -c qsky-cfg\n");
}

TEST_F(GetTree, ShowsTheChipsetOfInterfacesThatAreUp)
{
    fakePlatform.interfacesUp = "wlan0 wlan1-va3 ";
    fakePlatform.driver = driver();
    getTable[0].prepare(getTable, getTable);

    const std::string text = "wlan0 enable\n"
                             "\tSSID        : " +
                             std::string(256, 's') +
                             "\n\tBroadSSID   : Enable\n"
                             "\tTunnelMode  : TUNNEL\n"
                             "\tAuthType    : OPEN\n"
                             "\tRadioMode   : 11NGHT40\n"
                             "\tBeaconIntv  : 100\n"
                             "\tFragThres   : 2346\n"
                             "\tRtsThres    : 2347\n"
                             "\tDTIM Period : 1\n"
                             "\tCoexist     : Enable\n"
                             "\tChannel     : 11\n"
                             "\tCountryCode : US\n"
                             "wlan0-va0 disable\n"
                             "wlan0-va1 disable\n"
                             "wlan0-va2 disable\n"
                             "wlan0-va3 disable\n"
                             "wlan1 disable\n"
                             "wlan1-va0 disable\n"
                             "wlan1-va1 disable\n"
                             "wlan1-va2 disable\n"
                             "wlan1-va3 enable\n"
                             "\tSSID        : NULL\n"
                             "\tBroadSSID   : Disable\n"
                             "\tTunnelMode  : LOCAL BR\n"
                             "\tAuthType    : OPEN\n"
                             "\tRadioMode   : Unknown\n"
                             "\tBeaconIntv  : 100\n"
                             "\tFragThres   : 2346\n"
                             "\tRtsThres    : 2347\n"
                             "\tDTIM Period : 1\n";
    constexpr const char* kAuthTypes[] = {"Unknown", "OPEN", "WPA-PSK", "WPA2-PSK", "WPA/WPA2-PSK", "DOT1X", "Unknown"};
    authType = -1;
    for (const std::string name : kAuthTypes) {
        const std::string first = changed(text, ": OPEN", ": " + name);
        EXPECT_EQ(screen("get vap chipset-status"), changed(first, ": OPEN", ": " + name));
        ++authType;
    }
}

TEST_F(GetTree, TakesAMissingDriverOperationForAFailingOne)
{
    fakePlatform.interfacesUp = "wlan1 ";
    EXPECT_NE(screen("get vap chipset-status")
                  .find("\tSSID        : NULL\n\tBroadSSID   : Disable\n\tTunnelMode  : TUNNEL\n"
                        "\tAuthType    : Unknown\n\tRadioMode   : Unknown\n\tBeaconIntv  : -1\n"
                        "\tFragThres   : -1\n\tRtsThres    : -1\n\tDTIM Period : -1\n"
                        "\tCoexist     : Disable\n\tChannel     : -1\n\tCountryCode : Unknown\n"),
              std::string::npos);
}
