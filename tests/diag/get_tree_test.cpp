#include "diag/get_tree.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
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
    Bytes answer;
    std::optional<int> reportedLength; ///< the answer's own where not given
    int failingAllocation = 0;         ///< counted from 1; 0: none
    std::map<void*, int> buffers;      ///< not yet freed, with their sizes
    std::vector<int> allocated;
    std::vector<int> freed;
    std::vector<std::string> calls;
    Bytes message;
    bool replyWasZero = false;
};

Channel channel;

struct System {
    std::vector<std::string> up;
    const char* serial = nullptr;
};

System device;

} // namespace

void* ipcmsg_alloc(int size)
{
    if (static_cast<int>(channel.allocated.size()) + 1 == channel.failingAllocation)
        return nullptr;
    channel.allocated.push_back(size);
    void* buffer = std::malloc(static_cast<std::size_t>(size));
    std::memset(buffer, 0xa5, static_cast<std::size_t>(size));
    channel.buffers[buffer] = size;
    return buffer;
}

void ipcmsg_free(void* buffer)
{
    ASSERT_TRUE(channel.buffers.contains(buffer));
    channel.freed.push_back(channel.buffers[buffer]);
    channel.buffers.erase(buffer);
    std::free(buffer);
}

int ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length, void* reply,
                         int* reply_length, int timeout_ms)
{
    const auto* bytes = static_cast<const std::uint8_t*>(request);
    channel.message.assign(bytes, bytes + request_length);
    channel.calls.push_back("ask " + std::to_string(destination) + " " + std::to_string(flags) + " " +
                            std::to_string(type) + " " + std::to_string(*reply_length) + " " +
                            std::to_string(timeout_ms));
    auto* out = static_cast<std::uint8_t*>(reply);
    channel.replyWasZero = std::all_of(out, out + *reply_length, [](std::uint8_t byte) { return byte == 0; });
    std::copy(channel.answer.begin(), channel.answer.end(), out);
    if (channel.result == 0)
        *reply_length = channel.reportedLength.value_or(static_cast<int>(channel.answer.size()));
    return channel.result;
}

int ipcmsg_send(int destination, int flags, int type, const void* message, int length)
{
    const auto* bytes = static_cast<const std::uint8_t*>(message);
    channel.message.assign(bytes, bytes + length);
    channel.calls.push_back("send " + std::to_string(destination) + " " + std::to_string(flags) + " " +
                            std::to_string(type));
    return channel.result;
}

int sys_intf_status(const char* interface)
{
    return std::ranges::count(device.up, std::string(interface)) == 0 ? 0 : -3;
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
    if (device.serial == nullptr)
        return -1;
    std::snprintf(text, sizeof text, "%s", device.serial);
    return 0;
}

namespace
{

class GetTree : public DeviceTest
{
protected:
    GetTree()
    {
        channel = {};
        device = {};
        wirelessApi = {};
    }
    ~GetTree() override { EXPECT_TRUE(channel.buffers.empty()); }

    /// Runs `get group leaf`.
    static int run(const std::string& group, const std::string& leaf)
    {
        for (cli_node& node : getTable)
            if (group == node.name)
                for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount)))
                    if (leaf == child.name)
                        return child.handler(3, arguments);
        ADD_FAILURE() << group << " " << leaf;
        return -2;
    }
    static std::string screen(const std::string& group, const std::string& leaf)
    {
        return outputOf([&] { EXPECT_EQ(run(group, leaf), 0); });
    }

    static inline char* arguments[3] = {};
};

constexpr struct {
    const char* group;
    const char* leaf;
    int type;
    int capacity;
    const char* noAnswer;
    const char* empty; ///< begin of what an empty reply shows
} kQueries[] = {
    {"vap", "cfg-info", 1, 22180, "System busy\n", "\nTotal: 0\n==="},
    {"wtp", "info", 2, 2992, "System is busy, please try again.\n", "WTP Configuration\n"},
    {"wtp", "stations", 3, 65536, "================================================== \n\nTotal: 0\n",
     "================================================== \n\nTotal: 0\n"},
    {"radio", "info", 5, 65536, "System busy\n", "================================================== \n\nTotal: 0\n"},
};

} // namespace

TEST_F(GetTree, ListsItsCommands)
{
    std::string rows;
    for (const cli_node& node : getTable) {
        rows += std::string(node.name) + ": " + (node.handler == nullptr ? "group" : "handler") + "\n";
        for (const cli_node& child : std::span(node.children, static_cast<std::size_t>(node.childCount)))
            rows += "  " + std::string(child.name) + ": " + child.help + "\n";
    }
    EXPECT_EQ(rows, "vap: group\n"
                    "  chipset-status: Chipset status.\n"
                    "  cfg-info: Config information.\n"
                    "wtp: group\n"
                    "  info: AP state information.\n"
                    "  stations: Stations information.\n"
                    "radio: group\n"
                    "  info: Radio information.\n"
                    "system: group\n"
                    "  version: Version information.\n"
                    "  performance: System performance information.\n"
                    "qsky: group\n"
                    "  info: Quillsky information.\n");
    EXPECT_STREQ(getTable[0].help, "Wireless information.");
    EXPECT_EQ(getTable[0].prepare, vapPrepare);
}

TEST_F(GetTree, AsksTheDaemonAndFreesWhatItTook)
{
    for (const auto& query : kQueries) {
        channel = {};
        EXPECT_TRUE(screen(query.group, query.leaf).starts_with(query.empty));
        EXPECT_EQ(channel.calls, std::vector{"ask 1 0 " + std::to_string(query.type) + " " +
                                             std::to_string(query.capacity) + " 10000"});
        EXPECT_EQ(channel.allocated, (std::vector{2, query.capacity}));
        EXPECT_EQ(channel.freed, channel.allocated);
        EXPECT_TRUE(channel.replyWasZero);
        const auto words = static_cast<std::uint8_t>(reinterpret_cast<std::uintptr_t>(+arguments));
        EXPECT_EQ(channel.message, query.type == 1 ? (Bytes{3, words}) : Bytes(2));
    }
}

TEST_F(GetTree, SaysWhenThereIsNoAnswer)
{
    for (const auto& query : kQueries)
        for (const int result : {-1, 1}) {
            channel = {};
            channel.result = result;
            EXPECT_EQ(screen(query.group, query.leaf), query.noAnswer);
            EXPECT_EQ(channel.freed, channel.allocated);
        }
    // The station list shows what the reply buffer holds, whatever the result.
    channel.answer = listOf(0x180, {});
    EXPECT_EQ(screen("wtp", "stations"), "================================================== \n\nTotal: 384\n");
}

TEST_F(GetTree, FailsSilentlyWithoutBuffers)
{
    for (const auto& query : kQueries)
        for (const int failing : {1, 2}) {
            channel = {};
            channel.failingAllocation = failing;
            EXPECT_EQ(outputOf([&] { EXPECT_EQ(run(query.group, query.leaf), -1); }), "");
            EXPECT_TRUE(channel.calls.empty());
            EXPECT_EQ(channel.freed, channel.allocated);
        }
    channel = {};
    channel.failingAllocation = 1;
    EXPECT_EQ(outputOf([] { EXPECT_EQ(sendToDaemon(kMessageSetPower, Bytes(4)), -1); }), "");
    EXPECT_TRUE(channel.calls.empty());
}

TEST_F(GetTree, KeepsToTheReplyWhateverLengthIsReported)
{
    const std::string none = "================================================== \n\nTotal: 0\n";
    channel.answer = Bytes(2064, 2);
    channel.reportedLength = -5;
    EXPECT_EQ(screen("radio", "info"), none);
    channel.reportedLength = 2063;
    EXPECT_EQ(screen("radio", "info"), none);
    channel.reportedLength = 2147483647;
    EXPECT_TRUE(screen("radio", "info").ends_with("\nTotal: 31\n"));
    // The last station that begins in the buffer ends outside of it.
    channel.answer = listOf(0x0000ff7f, {});
    EXPECT_EQ(screen("wtp", "stations").find("===   0 ==="), 0U);
}

TEST_F(GetTree, SendsMessagesThatAreNotAnswered)
{
    const Bytes country = {0, 0, 0x48, 0x03, 'U', 'S', 0, 0};
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(sendToDaemon(kMessageSetCountry, country), 0); }), "");
    EXPECT_EQ(channel.calls, std::vector<std::string>{"send 1 0 6"});
    EXPECT_EQ(channel.message, country);
    EXPECT_EQ(channel.freed, std::vector{8});

    channel = {};
    channel.result = 1;
    EXPECT_EQ(outputOf([] { EXPECT_EQ(sendToDaemon(kMessageSetPower, Bytes(4)), 0); }),
              "System is busy, please try again.\n");
    EXPECT_EQ(channel.calls, std::vector<std::string>{"send 1 0 7"});
    EXPECT_EQ(channel.freed, std::vector{4});
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
    device.serial = "QK31012345678901";
    EXPECT_EQ(screen("system", "version"), text);
    device.serial = nullptr;
    EXPECT_EQ(screen("system", "version"), changed(text, "QK31012345678901", ""));
}

TEST_F(GetTree, ShowsLoadAndUptime)
{
    EXPECT_EQ(screen("system", "performance"), "cpu usage rate: 7%\nmemory usage rate: 100%\n"
                                               " 10:00:00 up 3 days, load average: 0.00\n");
}

TEST_F(GetTree, AsksTheDiagnoseToolForTheCloud)
{
    plantTool("cw_diag", "echo \"qsky: $*\"");
    EXPECT_EQ(screen("qsky", "info"), "qsky: -c qsky-cfg\n");
}

TEST_F(GetTree, ShowsTheChipsetOfInterfacesThatAreUp)
{
    device.up = {"wlan0", "wlan1-va3"};
    const auto isRadio = [](const char* interface) {
        return std::string(interface) == "wlan0";
    };
    static const auto check = isRadio;
    wirelessApi.get_coexist = [](const char*) {
        return -1;
    };
    wirelessApi.get_radio_mode = [](const char* interface, char* buffer) {
        std::strcpy(buffer, "11NGHT40");
        return check(interface) ? 0 : -1;
    };
    wirelessApi.get_channel = [](const char*) {
        return 11;
    };
    wirelessApi.get_beacon_interval = [](const char*) {
        return 100;
    };
    wirelessApi.get_dtim_period = [](const char*) {
        return 1;
    };
    wirelessApi.get_rts_threshold = [](const char*) {
        return 2347;
    };
    wirelessApi.get_frag_threshold = [](const char*) {
        return 2346;
    };
    wirelessApi.get_ssid = [](const char* interface, char* buffer, int size) -> const char* {
        EXPECT_EQ(size, 256);
        if (!check(interface))
            return nullptr;
        std::memset(buffer, 's', static_cast<std::size_t>(size)); // no terminator
        return buffer;
    };
    wirelessApi.get_broadcast_ssid = [](const char* interface) {
        return check(interface) ? 2 : 0;
    };
    wirelessApi.get_country = [](const char*, char* buffer, int size) {
        return std::snprintf(buffer, static_cast<std::size_t>(size), "US") - 2;
    };
    wirelessApi.get_local_bridging = [](const char* interface) {
        return check(interface) ? 0 : 1;
    };
    wirelessApi.get_auth_type = [](const char*) {
        return 3;
    };

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

    const struct {
        int (*get)(const char*);
        const char* name;
    } kAuthTypes[] = {
        {[](const char*) { return 0; }, "OPEN"},     {[](const char*) { return 1; }, "WPA-PSK"},
        {[](const char*) { return 2; }, "WPA2-PSK"}, {[](const char*) { return 4; }, "DOT1X"},
        {[](const char*) { return 5; }, "Unknown"},  {[](const char*) { return -1; }, "Unknown"},
    };
    for (const auto& type : kAuthTypes) {
        wirelessApi.get_auth_type = type.get;
        const std::string named = changed(changed(text, "WPA/WPA2-PSK", type.name), "WPA/WPA2-PSK", type.name);
        EXPECT_EQ(screen("vap", "chipset-status"), named);
    }
}

TEST_F(GetTree, TakesAMissingDriverOperationForAFailingOne)
{
    device.up = {"wlan1"};
    const std::string text = "wlan1 enable\n"
                             "\tSSID        : NULL\n"
                             "\tBroadSSID   : Disable\n"
                             "\tTunnelMode  : TUNNEL\n"
                             "\tAuthType    : Unknown\n"
                             "\tRadioMode   : Unknown\n"
                             "\tBeaconIntv  : -1\n"
                             "\tFragThres   : -1\n"
                             "\tRtsThres    : -1\n"
                             "\tDTIM Period : -1\n"
                             "\tCoexist     : Disable\n"
                             "\tChannel     : -1\n"
                             "\tCountryCode : Unknown\n";
    EXPECT_NE(screen("vap", "chipset-status").find(text), std::string::npos);
    wirelessApi.get_ssid = [](const char*, char*, int) -> const char* {
        return "";
    };
    wirelessApi.get_country = [](const char*, char*, int) {
        return -1;
    };
    EXPECT_NE(screen("vap", "chipset-status").find(text), std::string::npos);
}
