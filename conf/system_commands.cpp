#include "conf/system_commands.h"

#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "base/text.h"
#include "conf/messages.h"
#include "conf/ranges.h"
#include "conf/sys_conf.h"
#include "platform/device_file.h"
#include "platform/system_library.h"
#include "shell/idle_timeout.h"
#include "shell/output.h"
#include "shell/tools.h"

namespace
{

/// Shows or sets an item. `apply` checks the value and puts it into effect. If it returns another value than 0, that is
/// the result of the command and nothing is written.
int systemItem(int argc, char** argv, int (*apply)(const char* value))
{
    if (argc != 3 && argc != 4) {
        cli_print("    Error: Too many parameters!\n");
        return -1;
    }
    if (argc == 3) {
        sysConfShow(argv[2], sysConfig);
        return 0;
    }
    if (const int refused = apply(argv[3]); refused != 0)
        return refused;
    return sysConfChange(argv[2], argv[3]);
}

int refuse(const char* message)
{
    cli_print(message);
    return -1;
}

int refuseValue(const char* value)
{
    cli_printf(kInvalidParameter, value);
    return -1;
}

int applyFactorysn(const char* value)
{
    if (std::strlen(value) >= sizeof sysConfig.factorysn)
        return refuse("    Error: The length must be less than 63.\n");
    return 0;
}

// Composes the second command before it runs the first one: if the address is too long, the old addresses are kept.
int applyMgmtAddr(const char* value)
{
    char command[kCommandLength + 1];
    if (!composeCommand(command, "ip addr add %s dev eth0 2>/dev/null", value))
        return -1;
    runCommand("ip addr flush dev eth0 2>/dev/null");
    return runCommand(command);
}

// The tools would take a name that begins with '-' for an option.
int applyHostname(const char* value)
{
    constexpr int kTooLong = -2;
    if (value[0] == '-')
        return refuseValue(value);
    const int verdict = valid_hostname(value);
    if (verdict == kTooLong)
        return refuse("    Error: The string is too long, the upper limit is 36.\n");
    if (verdict != 0)
        return refuse("    Error: The legal characters are numbers (0-9), letters(a-z,A-z) and special characters - "
                      "and _.\n");
    char setName[256];
    char announceName[256];
    if (!composeCommand(setName, "hostname %s", value) ||
        !composeCommand(announceName, "qln-set-hostname %s --no-save > /dev/null 2>&1", value))
        return -1;
    runCommand(setName);
    runCommand(announceName);
    return 0;
}

struct ConsoleSpeed {
    int baudrate;
    speed_t speed;
};

constexpr ConsoleSpeed kConsoleSpeeds[] = {
    {9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200},
};

const ConsoleSpeed* consoleSpeedOf(int baudrate)
{
    for (const ConsoleSpeed& row : kConsoleSpeeds)
        if (row.baudrate == baudrate)
            return &row;
    return nullptr;
}

/// Returns null, or an error message.
const char* setConsoleSpeed(int fd, speed_t speed)
{
    termios options;
    if (tcgetattr(fd, &options) != 0)
        return "\r\n    Error: Can not get console options\n";
    if (cfsetispeed(&options, speed) != 0 || cfsetospeed(&options, speed) != 0)
        return "\r\n    Error: can not set console speed\n";
    if (tcsetattr(fd, TCSADRAIN, &options) != 0)
        return "\r\n    Error: can not set console options\n";
    return nullptr;
}

int applyBaudrate(const char* value)
{
    if (!isDigits(value))
        return refuse("    Error: The parameter is not digital!\n");
    const ConsoleSpeed* row = consoleSpeedOf(numberFrom(value));
    if (row == nullptr)
        return refuseValue(value);
    const int fd = open(DeviceFile("/dev/console").path(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (fd < 0)
        return refuse("\r\n    Error: Can not open console device!\n");
    const char* failure = setConsoleSpeed(fd, row->speed);
    close(fd);
    return failure == nullptr ? 0 : refuse(failure);
}

int applyAdminTimeout(const char* value)
{
    constexpr int kSecondsPerMinute = 60;
    constexpr Range kMinutes = rangeOf("admin-timeout");
    const int minutes = numberFrom(value);
    if (!isDigits(value) || minutes < kMinutes.low || minutes > kMinutes.high)
        return refuseValue(value);
    runCommandf("echo %d > %s", minutes * kSecondsPerMinute, DeviceFile(kIdleTimeoutFile).path());
    return 0;
}

} // namespace

int factorysnCommand(int argc, char** argv)
{
    return systemItem(argc, argv, applyFactorysn);
}

int mgmtAddrCommand(int argc, char** argv)
{
    return systemItem(argc, argv, applyMgmtAddr);
}

int hostnameCommand(int argc, char** argv)
{
    return systemItem(argc, argv, applyHostname);
}

int baudrateCommand(int argc, char** argv)
{
    return systemItem(argc, argv, applyBaudrate);
}

int adminTimeoutCommand(int argc, char** argv)
{
    return systemItem(argc, argv, applyAdminTimeout);
}
