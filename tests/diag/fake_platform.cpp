#include "tests/diag/fake_platform.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "bios/platform_info.h"
#include "diag/wireless.h"
#include "platform/message_channel.h"
#include "platform/system_library.h"
#include "platform/wireless_library.h"
#include "shell/executor.h"

FakePlatform fakePlatform;

FakePlatformTest::FakePlatformTest()
{
    fakePlatform = {};
    wirelessApi = {};
}

std::string FakePlatformTest::run(const std::string& line, int expectedResult)
{
    const testing::ScopedTrace trace(__FILE__, __LINE__, line);
    std::string output = outputOf([&] { EXPECT_EQ(executeLine(line.c_str()), expectedResult); });
    EXPECT_EQ(fakePlatform.freed, fakePlatform.allocated.size());
    return output;
}

void* ipcmsg_alloc(int size)
{
    if (fakePlatform.buffersLeft == 0)
        return nullptr;
    --fakePlatform.buffersLeft;
    fakePlatform.allocated.push_back(size);
    return std::memset(std::malloc(static_cast<std::size_t>(size)), 0xa5, static_cast<std::size_t>(size));
}

void ipcmsg_free(void* buffer)
{
    EXPECT_NE(buffer, nullptr);
    ++fakePlatform.freed;
    std::free(buffer);
}

int ipcmsg_send(int destination, int flags, int type, const void* message, int length)
{
    const auto* bytes = static_cast<const std::uint8_t*>(message);
    fakePlatform.sent.push_back({std::to_string(destination) + " " + std::to_string(flags) + " " + std::to_string(type),
                                 {bytes, bytes + length}});
    return fakePlatform.channelResult;
}

int ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length, void* reply,
                         int* reply_length, int timeout_ms)
{
    ipcmsg_send(destination, flags, type, request, request_length);
    fakePlatform.sent.back().header += " " + std::to_string(*reply_length) + " " + std::to_string(timeout_ms);
    auto* out = static_cast<std::uint8_t*>(reply);
    EXPECT_EQ(std::count(out, out + *reply_length, 0), *reply_length);
    std::copy(fakePlatform.answer.begin(), fakePlatform.answer.end(), out);
    if (fakePlatform.channelResult == 0)
        *reply_length = fakePlatform.answerLength.value_or(static_cast<int>(fakePlatform.answer.size()));
    return fakePlatform.channelResult;
}

int biosGetRegCode(char& letter)
{
    letter = fakePlatform.region;
    return fakePlatform.region != '\0' ? 0 : -1;
}

int sys_intf_status(const char* interface)
{
    return fakePlatform.interfaceUp == interface ? -3 : 0;
}

int rtl_wlan_get_bgscan(const char* interface, int flags, void* buffer, int size)
{
    fakePlatform.scans.push_back(std::string(interface) + " " + std::to_string(size));
    std::memset(buffer, flags, static_cast<std::size_t>(size));
    return size < fakePlatform.scanNeeds ? -1 : 0;
}

int kstr_regdmn_get_country_code(const char* country)
{
    return std::strcmp(country, "US") == 0 ? 840 : std::strcmp(country, "JAPAN") == 0 ? 392 : 0;
}

const char* kstr_regdmn_get_default_country(const char* region_code)
{
    fakePlatform.regionAsked = region_code;
    return "US";
}
