// Tests of the requests to the daemon and the driver, and of the output for their answers.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "diag/wireless.h"
#include "shell/executor.h"
#include "tests/support/device.h"

namespace
{

constexpr char kBusy[] = "System is busy, please try again.\n";

using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;

/// The recorded calls of the platform's libraries, and their answers.
struct FakePlatform {
    /// One text for each message to the daemon: destination, flags, type and bytes. If the message is a query, the
    /// capacity of the reply buffer and the time-out come first.
    Texts sent{};
    int channelResult = 0;
    Bytes answer{};
    std::optional<int> answerLength{}; ///< the reported length; the length of the answer if it is not set
    std::size_t buffersLeft = 1000;
    std::vector<int> allocated{}; ///< sizes of the channel's buffers
    std::size_t freed = 0;

    std::string interfaceUp{};
    Texts scans{};     ///< interface and buffer size of each background scan
    int scanNeeds = 0; ///< size of a scan's result in bytes
};

FakePlatform fakePlatform;

class RequestTest : public DeviceTest
{
protected:
    RequestTest() { fakePlatform = {}; }

    /// The output of a line. Fails the test if the command does not return `expectedResult` or keeps a buffer.
    static std::string run(const std::string& line, int expectedResult = 0)
    {
        const testing::ScopedTrace trace(__FILE__, __LINE__, line);
        std::string output = outputOf([&] { EXPECT_EQ(executeLine(line.c_str()), expectedResult); });
        EXPECT_EQ(fakePlatform.freed, fakePlatform.allocated.size());
        return output;
    }
};

} // namespace

// These functions replace those of the platform.
extern "C" {

void* __wrap_ipcmsg_alloc(int size)
{
    if (fakePlatform.buffersLeft == 0)
        return nullptr;
    --fakePlatform.buffersLeft;
    fakePlatform.allocated.push_back(size);
    return std::memset(std::malloc(static_cast<std::size_t>(size)), 0xa5, static_cast<std::size_t>(size));
}

void __wrap_ipcmsg_free(void* buffer)
{
    EXPECT_NE(buffer, nullptr);
    ++fakePlatform.freed;
    std::free(buffer);
}

int __wrap_ipcmsg_send(int destination, int flags, int type, const void* message, int length)
{
    std::string text = std::to_string(destination) + " " + std::to_string(flags) + " " + std::to_string(type) + ":";
    for (int i = 0; i < length; ++i) {
        // The third and fourth byte of a setting are a number in host byte order.
        const int at = std::endian::native == std::endian::big && i / 2 == 1 ? i ^ 1 : i;
        text += " " + std::to_string(static_cast<const std::uint8_t*>(message)[at]);
    }
    fakePlatform.sent.push_back(text);
    return fakePlatform.channelResult;
}

int __wrap_ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length,
                                void* reply, int* reply_length, int timeout_ms)
{
    __wrap_ipcmsg_send(destination, flags, type, request, request_length);
    fakePlatform.sent.back().insert(0, std::to_string(*reply_length) + " " + std::to_string(timeout_ms) + " ");
    auto* out = static_cast<std::uint8_t*>(reply);
    EXPECT_EQ(std::count(out, out + *reply_length, 0), *reply_length);
    std::copy(fakePlatform.answer.begin(), fakePlatform.answer.end(), out);
    if (fakePlatform.channelResult == 0)
        *reply_length = fakePlatform.answerLength.value_or(static_cast<int>(fakePlatform.answer.size()));
    return fakePlatform.channelResult;
}

int __wrap_sys_intf_status(const char* interface)
{
    return fakePlatform.interfaceUp == interface ? -3 : 0;
}

int __wrap_rtl_wlan_get_bgscan(const char* interface, int flags, void* buffer, int size)
{
    fakePlatform.scans.push_back(std::string(interface) + " " + std::to_string(size));
    std::memset(buffer, flags, static_cast<std::size_t>(size));
    return size < fakePlatform.scanNeeds ? -1 : 0;
}

int __wrap_kstr_regdmn_get_country_code(const char* country)
{
    return std::strcmp(country, "US") == 0 ? 840 : std::strcmp(country, "JAPAN") == 0 ? 392 : 0;
}
}

TEST_F(RequestTest, QueriesTellWhetherThereIsAnAnswer)
{
    const std::string rule = "================================================== \n\nTotal: ";
    const struct {
        const char* line;
        int capacity;
        /// The beginning of the text in FakePlatform::sent. The query for VAPs contains the number of words of the line
        /// and a byte whose value has no meaning, which is left out here.
        const char* sent;
        std::string empty; ///< the beginning of the display of an empty reply
        std::string noAnswer;
    } queries[] = {
        {"get vap cfg-info", 22180, "22180 10000 1 0 1: 3 ", "\nTotal: 0\n===", "System busy\n"},
        {"get wtp info", 2992, "2992 10000 1 0 2: 0 0", "WTP Configuration\n", kBusy},
        {"get wtp stations", 65536, "65536 10000 1 0 3: 0 0", rule + "0\n", rule + "0\n"},
        {"get radio info", 65536, "65536 10000 1 0 5: 0 0", rule + "0\n", "System busy\n"},
    };
    for (const auto& query : queries) {
        fakePlatform = {};
        EXPECT_TRUE(run(query.line).starts_with(query.empty));
        EXPECT_EQ(fakePlatform.sent.size(), 1U);
        EXPECT_TRUE(fakePlatform.sent.back().starts_with(query.sent)) << fakePlatform.sent.back();
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
    }
    // The station list prints the reply buffer even if there was no answer.
    fakePlatform = {.channelResult = -1, .answer = {0x80, 0, 0, 0x80}};
    EXPECT_EQ(run("get wtp stations"), rule + "-2147483520\n");
}

TEST_F(RequestTest, KeepsToTheReplyWhateverLengthIsReported)
{
    for (const auto& [length, total] :
         {std::pair{-5, "Total: 0\n"}, {2063, "Total: 0\n"}, {2147483647, "Total: 31\n"}}) {
        fakePlatform = {.answer = Bytes(2064, 2), .answerLength = length};
        EXPECT_TRUE(run("get radio info").ends_with(total));
    }
    // The last station begins inside the buffer and ends outside.
    fakePlatform = {.answer = {0, 0, 0xff, 0x7f}, .answerLength = 65537};
    EXPECT_TRUE(run("get wtp stations").ends_with("\nTotal: 65407\n"));
}

TEST_F(RequestTest, TheDriverMayLackOperationsAndTerminators)
{
    fakePlatform.interfaceUp = "wlan1";
    const std::string settings = "\tSSID        : NULL\n\tBroadSSID   : Disable\n\tTunnelMode  : TUNNEL\n"
                                 "\tAuthType    : Unknown\n\tRadioMode   : Unknown\n\tBeaconIntv  : -1\n"
                                 "\tFragThres   : -1\n\tRtsThres    : -1\n\tDTIM Period : -1\n"
                                 "\tCoexist     : Disable\n\tChannel     : -1\n\tCountryCode : Unknown\n";
    EXPECT_NE(run("get vap chipset-status").find("wlan1 enable\n" + settings + "wlan1-va0 disable\n"),
              std::string::npos);

    // A text that fills the driver's buffer has no terminator.
    wirelessApi.get_ssid = [](const char*, char* buffer, int size) {
        return static_cast<const char*>(std::memset(buffer, 's', static_cast<std::size_t>(size)));
    };
    EXPECT_NE(run("get vap chipset-status").find(": " + std::string(256, 's') + "\n\tBroadSSID"), std::string::npos);
}

TEST_F(RequestTest, PowerIsSentAsTyped)
{
    const std::pair<const char*, const char*> cases[] = {
        {"txpower 0 50%", "1 0 7: 0 1 50 0"},     {"txpower 2 300", "1 0 7: 2 0 44 1"},
        {"txpower 257 65537", "1 0 7: 1 0 1 0"},  {"txpower -1 -2", "1 0 7: 255 0 254 255"},
        {"txpower 1x 20dBm%", "1 0 7: 1 1 20 0"}, {"txpower 0 99999999999999999999", "1 0 7: 0 0 255 255"},
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
    EXPECT_EQ(fakePlatform.allocated, std::vector{4}) << "no buffer for a reply";
    fakePlatform.buffersLeft = 0;
    EXPECT_EQ(run("txpower 0 10", -1), "");
}

TEST_F(RequestTest, CountryIsSentWithFullPower)
{
    for (const char* tool : {"ifconfig", "iwpriv"})
        plantRecorder(tool);
    EXPECT_TRUE(run("country XX").starts_with("Can NOT find any country named XX.\n"));
    EXPECT_EQ(run("country JAPAN"), "");
    EXPECT_EQ(fakePlatform.sent, (Texts{"1 0 7: 0 1 100 0", "1 0 7: 1 1 100 0", "1 0 6: 0 0 136 1 74 65 80 0"}));
    fakePlatform = {.channelResult = -1};
    EXPECT_EQ(run("country US"), std::string(kBusy) + kBusy + kBusy);
    EXPECT_EQ(fakePlatform.sent.back(), "1 0 6: 0 0 72 3 85 83 0 0");
    fakePlatform = {.buffersLeft = 2};
    EXPECT_EQ(run("country US", -1), "");
}

TEST_F(RequestTest, TheScanBufferGrowsTwice)
{
    const struct {
        const char* line;
        int needs;
        Texts scans;
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
