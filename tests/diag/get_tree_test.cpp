#include "diag/get_tree.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "bios/platform_info.h"
#include "diag/exchange.h"
#include "diag/wireless.h"
#include "platform/message_channel.h"
#include "platform/system_library.h"
#include "tests/diag/record.h"

namespace
{

using Bytes = std::vector<std::uint8_t>;

/// A channel whose daemon answers as told, and which remembers what was asked of it.
struct Channel {
    int result = 0;
    Bytes answer{};
    std::optional<int> reportedLength{}; ///< the answer's own where not given
    std::size_t buffersLeft = 2;
    std::vector<int> allocated{};
    std::size_t freed = 0;
    std::string call{};
    Bytes message{};
};

Channel channel;
std::string interfacesUp;
const char* serialNumber;

} // namespace

void* ipcmsg_alloc(int size)
{
    if (channel.allocated.size() == channel.buffersLeft)
        return nullptr;
    channel.allocated.push_back(size);
    return std::memset(std::malloc(static_cast<std::size_t>(size)), 0xa5, static_cast<std::size_t>(size));
}

void ipcmsg_free(void* buffer)
{
    EXPECT_NE(buffer, nullptr);
    ++channel.freed;
    std::free(buffer);
}

int ipcmsg_send(int destination, int flags, int type, const void* message, int length)
{
    const auto* bytes = static_cast<const std::uint8_t*>(message);
    channel.message.assign(bytes, bytes + length);
    for (const int argument : {destination, flags, type})
        channel.call += std::to_string(argument) + " ";
    return channel.result;
}

int ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length, void* reply,
                         int* reply_length, int timeout_ms)
{
    ipcmsg_send(destination, flags, type, request, request_length);
    channel.call += std::to_string(*reply_length) + " " + std::to_string(timeout_ms);
    auto* out = static_cast<std::uint8_t*>(reply);
    EXPECT_EQ(std::count(out, out + *reply_length, 0), *reply_length);
    std::copy(channel.answer.begin(), channel.answer.end(), out);
    if (channel.result == 0)
        *reply_length = channel.reportedLength.value_or(static_cast<int>(channel.answer.size()));
    return channel.result;
}

int sys_intf_status(const char* interface)
{
    return interfacesUp.find(interface + std::string(" ")) == std::string::npos ? 0 : -3;
}

int get_cpu_usage_rate()
{
    return 7;
}

int get_memory_usage_rate()
{
    return 100;
}

int uptime_main(char* buffer, int size)
{
    EXPECT_EQ(size, 256);
    return std::snprintf(buffer, static_cast<std::size_t>(size), " 10:00:00 up 3 days, load average: 0.00");
}

int biosGetOemSn(char (&text)[17])
{
    return serialNumber == nullptr ? -1 : std::snprintf(text, sizeof text, "%s", serialNumber) - 16;
}

namespace
{

class GetTree : public DeviceTest
{
protected:
    GetTree()
    {
        channel = {};
        interfacesUp = "";
        serialNumber = nullptr;
        wirelessApi = {};
    }
    ~GetTree() override { EXPECT_EQ(channel.freed, channel.allocated.size()); }

    /// What `get group leaf` says; the command's result must be as expected.
    static std::string screen(const std::string& group, const std::string& leaf, int expectedResult = 0)
    {
        for (const cli_node& node : getTable)
            for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount)))
                if (group == node.name && leaf == child.name)
                    return outputOf([&] { EXPECT_EQ(child.handler(3, arguments), expectedResult); });
        return "no such command";
    }

    static inline char* arguments[3] = {};
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

int fillRadioMode(const char* interface, char* buffer)
{
    std::strcpy(buffer, "11NGHT40");
    return isRadio(interface) ? 0 : -1;
}

/// A text that fills the buffer, without a terminator, or an empty one.
const char* fillSsid(const char* interface, char* buffer, int size)
{
    std::memset(buffer, isRadio(interface) ? 's' : '\0', static_cast<std::size_t>(size));
    return buffer;
}

int fillCountry(const char*, char* buffer, int size)
{
    return std::snprintf(buffer, static_cast<std::size_t>(size), "US") - 2;
}

} // namespace

TEST_F(GetTree, ListsItsCommands)
{
    std::string rows;
    for (const cli_node& node : getTable)
        for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount)))
            rows += std::string(node.name) + " " + child.name + ": " + child.help + "\n";
    EXPECT_EQ(rows, "vap chipset-status: Chipset status.\n"
                    "vap cfg-info: Config information.\n"
                    "wtp info: AP state information.\n"
                    "wtp stations: Stations information.\n"
                    "radio info: Radio information.\n"
                    "system version: Version information.\n"
                    "system performance: System performance information.\n"
                    "qsky info: Quillsky information.\n");
    EXPECT_STREQ(getTable[0].help, "Wireless information.");
    EXPECT_EQ(getTable[0].prepare, vapPrepare);
}

TEST_F(GetTree, AsksTheDaemon)
{
    const std::string nothing = "================================================== \n\nTotal: 0\n";
    const struct {
        const char* group;
        const char* leaf;
        int capacity;
        std::string call;
        Bytes request;
        std::string empty; ///< begin of what an empty reply shows
        std::string noAnswer;
    } kQueries[] = {
        {"vap",
         "cfg-info",
         22180,
         "1 0 1 22180 10000",
         {3, static_cast<std::uint8_t>(reinterpret_cast<std::uintptr_t>(+arguments))},
         "\nTotal: 0\n===",
         "System busy\n"},
        {"wtp", "info", 2992, "1 0 2 2992 10000", {0, 0}, "WTP Configuration\n", "System is busy, please try again.\n"},
        {"wtp", "stations", 65536, "1 0 3 65536 10000", {0, 0}, nothing, nothing},
        {"radio", "info", 65536, "1 0 5 65536 10000", {0, 0}, nothing, "System busy\n"},
    };
    for (const auto& query : kQueries) {
        channel = {};
        EXPECT_TRUE(screen(query.group, query.leaf).starts_with(query.empty));
        EXPECT_EQ(channel.call, query.call);
        EXPECT_EQ(channel.message, query.request);
        EXPECT_EQ(channel.allocated, (std::vector{2, query.capacity}));
        EXPECT_EQ(channel.freed, 2U);
        for (const int result : {-1, 1}) {
            channel = {.result = result};
            EXPECT_EQ(screen(query.group, query.leaf), query.noAnswer);
            EXPECT_EQ(channel.freed, 2U);
        }
        for (const std::size_t buffers : {std::size_t{0}, std::size_t{1}}) {
            channel = {.buffersLeft = buffers};
            EXPECT_EQ(screen(query.group, query.leaf, -1), "");
            EXPECT_EQ(channel.call, "");
            EXPECT_EQ(channel.freed, buffers);
        }
    }
    // The station list shows what the reply buffer holds, whatever the result.
    channel = {.result = -1, .answer = listOf(0x180, {})};
    EXPECT_EQ(screen("wtp", "stations"), changed(nothing, "0\n", "384\n"));
}

TEST_F(GetTree, KeepsToTheReplyWhateverLengthIsReported)
{
    const std::pair<int, std::string> kLengths[] = {
        {-5, "Total: 0\n"}, {2063, "Total: 0\n"}, {2147483647, "Total: 31\n"}};
    for (const auto& [length, total] : kLengths) {
        channel = {.answer = Bytes(2064, 2), .reportedLength = length};
        EXPECT_TRUE(screen("radio", "info").ends_with(total));
    }
    // The last station that begins in the buffer ends outside of it.
    channel = {.answer = listOf(0x0000ff7f, {}), .reportedLength = 65537};
    EXPECT_TRUE(screen("wtp", "stations").ends_with("\nTotal: 65407\n"));
}

TEST_F(GetTree, SendsMessagesThatAreNotAnswered)
{
    const Bytes country = {0, 0, 0x48, 0x03, 'U', 'S', 0, 0};
    const auto send = [&](int expected) {
        return [&, expected] {
            EXPECT_EQ(sendToDaemon(6, country), expected);
        };
    };
    EXPECT_EQ(outputOf(send(0)), "");
    EXPECT_EQ(channel.call, "1 0 6 ");
    EXPECT_EQ(channel.message, country);
    EXPECT_EQ(channel.freed, 1U);

    channel = {.result = 1};
    EXPECT_EQ(outputOf(send(0)), "System is busy, please try again.\n");
    EXPECT_EQ(channel.freed, 1U);

    channel = {.buffersLeft = 0};
    EXPECT_EQ(outputOf(send(-1)), "");
    EXPECT_EQ(channel.call, "");
}

TEST_F(GetTree, ShowsTheVersion)
{
    const std::string text = "=================================================================\n"
                             "\tSystem Version: Quillon-K91MV-5.04-AP-build0241-220118-patch4\n"
                             "\tBuild Label   : GA\n"
                             "\tBuild Date    : 220118\n"
                             "\tBuild Type    : Release\n"
                             "\tSerial Number : QK31012345678901\n"
                             "\tStartup Time  : \n"
                             "==================================================================\n";
    serialNumber = "QK31012345678901";
    EXPECT_EQ(screen("system", "version"), text);
    serialNumber = nullptr;
    EXPECT_EQ(screen("system", "version"), changed(text, "QK31012345678901", ""));
}

TEST_F(GetTree, ShowsLoadAndCloud)
{
    EXPECT_EQ(screen("system", "performance"), "cpu usage rate: 7%\nmemory usage rate: 100%\n"
                                               " 10:00:00 up 3 days, load average: 0.00\n");
    plantTool("cw_diag", "echo \"qsky: $*\"");
    EXPECT_EQ(screen("qsky", "info"), "qsky: -c qsky-cfg\n");
}

TEST_F(GetTree, ShowsTheChipsetOfInterfacesThatAreUp)
{
    interfacesUp = "wlan0 wlan1-va3 ";
    wirelessApi.get_coexist = answer<-1>;
    wirelessApi.get_radio_mode = fillRadioMode;
    wirelessApi.get_channel = answer<11>;
    wirelessApi.get_beacon_interval = answer<100>;
    wirelessApi.get_dtim_period = answer<1>;
    wirelessApi.get_rts_threshold = answer<2347>;
    wirelessApi.get_frag_threshold = answer<2346>;
    wirelessApi.get_ssid = fillSsid;
    wirelessApi.get_broadcast_ssid = answer<2, 0>;
    wirelessApi.get_country = fillCountry;
    wirelessApi.get_local_bridging = answer<0, 1>;
    wirelessApi.get_auth_type = answer<3>;

    const std::string text = "wlan0 enable\n"
                             "\tSSID        : " +
                             std::string(256, 's') +
                             "\n"
                             "\tBroadSSID   : Enable\n"
                             "\tTunnelMode  : TUNNEL\n"
                             "\tAuthType    : WPA/WPA2-PSK\n"
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
                             "\tAuthType    : WPA/WPA2-PSK\n"
                             "\tRadioMode   : Unknown\n"
                             "\tBeaconIntv  : 100\n"
                             "\tFragThres   : 2346\n"
                             "\tRtsThres    : 2347\n"
                             "\tDTIM Period : 1\n";
    EXPECT_EQ(screen("vap", "chipset-status"), text);

    const std::pair<int (*)(const char*), std::string> kAuthTypes[] = {
        {answer<0>, "OPEN"},  {answer<1>, "WPA-PSK"}, {answer<2>, "WPA2-PSK"},
        {answer<4>, "DOT1X"}, {answer<5>, "Unknown"}, {answer<-1>, "Unknown"},
    };
    for (const auto& [get, name] : kAuthTypes) {
        wirelessApi.get_auth_type = get;
        const std::string first = changed(text, "WPA/WPA2-PSK", name);
        EXPECT_EQ(screen("vap", "chipset-status"), changed(first, "WPA/WPA2-PSK", name));
    }
}

TEST_F(GetTree, TakesAMissingDriverOperationForAFailingOne)
{
    interfacesUp = "wlan1 ";
    EXPECT_TRUE(screen("vap", "chipset-status")
                    .find("\tSSID        : NULL\n\tBroadSSID   : Disable\n\tTunnelMode  : TUNNEL\n"
                          "\tAuthType    : Unknown\n\tRadioMode   : Unknown\n\tBeaconIntv  : -1\n"
                          "\tFragThres   : -1\n\tRtsThres    : -1\n\tDTIM Period : -1\n"
                          "\tCoexist     : Disable\n\tChannel     : -1\n\tCountryCode : Unknown\n") !=
                std::string::npos);
}
