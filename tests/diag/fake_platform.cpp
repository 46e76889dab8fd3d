#include "tests/diag/fake_platform.h"

#include <cstdlib>
#include <cstring>

#include "bios/platform_info.h"
#include "platform/message_channel.h"
#include "platform/system_library.h"
#include "platform/wireless_library.h"
#include "tests/support/words.h"

FakePlatform fakePlatform;

std::string FakePlatformTest::run(int (*handler)(int, char**), const std::string& line, int expectedResult)
{
    Words words(line);
    int result = expectedResult - 1;
    std::string output = outputOf([&] { result = handler(words.argc(), words.argv()); });
    EXPECT_EQ(result, expectedResult) << line;
    EXPECT_EQ(fakePlatform.buffersInUse, 0) << line;
    return output;
}

void* ipcmsg_alloc(int size)
{
    if (fakePlatform.buffersLeft-- <= 0)
        return nullptr;
    ++fakePlatform.buffersInUse;
    void* buffer = std::malloc(static_cast<std::size_t>(size));
    std::memset(buffer, 0xa5, static_cast<std::size_t>(size));
    return buffer;
}

void ipcmsg_free(void* buffer)
{
    --fakePlatform.buffersInUse;
    std::free(buffer);
}

int ipcmsg_send_and_recv(int, int, int, const void*, int, void*, int*, int)
{
    return -1;
}

int ipcmsg_send(int destination, int flags, int type, const void* message, int length)
{
    if (destination != 1 || flags != 0)
        return -1;
    const auto* bytes = static_cast<const std::uint8_t*>(message);
    fakePlatform.sent.push_back({type, {bytes, bytes + length}});
    return fakePlatform.sendResult;
}

int biosGetRegCode(char& letter)
{
    letter = fakePlatform.region;
    return fakePlatform.regionResult;
}

int init_wlan_api(wlan_api*)
{
    return 0;
}

int rtl_wlan_get_bgscan(const char* interface, int flags, void* buffer, int size)
{
    fakePlatform.scans.push_back(std::string(interface) + " " + std::to_string(size));
    std::memset(buffer, flags, static_cast<std::size_t>(size));
    return size < fakePlatform.scanNeeds ? -1 : 0;
}

int kstr_regdmn_get_country_code(const char* country)
{
    fakePlatform.namesAsked.emplace_back(country);
    return std::strcmp(country, "US") == 0 ? 840 : std::strcmp(country, "JAPAN") == 0 ? 392 : 0;
}

const char* kstr_regdmn_get_default_country(const char* region_code)
{
    fakePlatform.regionAsked = region_code;
    return fakePlatform.defaultCountry;
}

int sys_get_gpio_status(int line, int* value)
{
    *value = fakePlatform.lines[line];
    return 0;
}

int sys_set_gpio_status(int line, int value)
{
    fakePlatform.lines[line] = value;
    return 0;
}

int sys_get_reset_key_status()
{
    return fakePlatform.keyReleased ? 1 : 0;
}

int sys_set_led_sys_test()
{
    return fakePlatform.ledTestStatus;
}
