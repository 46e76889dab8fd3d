#include "diag/hardware_commands.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "base/text.h"
#include "platform/system_library.h"
#include "platform/wireless_library.h"
#include "shell/output.h"
#include "shell/signals.h"
#include "shell/tools.h"

namespace
{

constexpr int kPowerLedLine = 57;
constexpr timespec kLedTestTime = {1, 0};

/// Sizes of the result buffers that are tried in turn.
constexpr int kScanSizes[] = {16384, 32768, 65535};

void readGpioLine(int line)
{
    int value = 0;
    sys_get_gpio_status(line, &value);
    cli_printf("Read gpio[%d] = %d.\n", line, value);
}

void writeLine(int line, int value)
{
    sys_set_gpio_status(line, value);
    cli_printf("Write gpio[%d] = %d.\n", line, value);
}

} // namespace

int rstktCommand(int, char**)
{
    cli_print(sys_get_reset_key_status() != 0 ? "RERSET Key is UP.\n" : "RERSET Key is pressed DOWN.\n");
    return 0;
}

int gpioCommand(int argc, char** argv)
{
    if (argc < 3) {
        cli_print("CMD Format: gpio r/w %d %d\n");
        return 0;
    }
    int line = 0;
    if (!scanNumber(argv[2], line))
        return 0;
    int value = 0;
    if (argv[1][0] == 'r')
        readGpioLine(line);
    else if (argv[1][0] == 'w' && argc > 3 && scanNumber(argv[3], value))
        writeLine(line, value);
    return 0;
}

int getscanCommand(int argc, char** argv)
{
    if (argc < 2) {
        cli_print("CMD Format: getscan %d\n");
        return 0;
    }
    int radio = 0;
    if (!scanNumber(argv[1], radio))
        return 0;
    for (const int size : kScanSizes) {
        void* buffer = std::malloc(static_cast<std::size_t>(size));
        if (buffer == nullptr) {
            cli_printf("%s: no more memory to hold scan result.\n", "get_scan_test");
            return -1;
        }
        const int result = rtl_wlan_get_bgscan(radio > 0 ? "wlan1" : "wlan0", 0, buffer, size);
        std::free(buffer);
        if (result >= 0)
            break;
    }
    return 0;
}

int sptestCommand(int, char**)
{
    runCommand("sptest > /dev/null");
    cli_print("Please associate the SSID \"K91MV-2G\" and \"K91MV-5G\" with static IP address.\n");
    return 0;
}

int ledTestCommand(int argc, char** argv)
{
    if (argc < 3 || std::strcmp(argv[1], "power") != 0)
        return -1;
    const int level = std::strcmp(argv[2], "on") == 0 ? 0 : 1;
    const int result = sys_set_led_sys_test();
    // A signal other than an interrupt, like that of a resized window, does not end the wait.
    timespec left = kLedTestTime;
    while (nanosleep(&left, &left) != 0 && errno == EINTR && !isInterrupted()) {
    }
    sys_set_gpio_status(kPowerLedLine, level);
    cli_printf("proc_led_test gpio_num=%d, gpio_data=%d, ret=%d\n", kPowerLedLine, level, result);
    return 0;
}
