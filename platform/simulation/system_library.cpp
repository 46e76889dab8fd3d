// The system library of the simulated access point. Identity, interfaces, GPIO lines and LEDs are read from state files
// of the device. Load, memory and the terminal are those of the PC.

#include "platform/system_library.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <strings.h>
#include <termios.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/consoles.h"
#include "platform/simulation/enter_device.h"
#include "platform/simulation/fault_signals.h"
#include "platform/simulation/flash.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

constexpr std::size_t kHostnameLimit = 36;

// Long enough to measure a rate, and too short to be noticed.
constexpr timespec kLoadSample = {0, 100'000'000};

const char* faultApp = "";
termios terminalAtStart;
bool terminalIsKnown = false;

void say(const char* text)
{
    if (write(STDERR_FILENO, text, std::strlen(text)) < 0)
        return;
}

/// Restores the terminal and prints the fault. Then the default action of the signal ends the process.
void faultHandler(int signal)
{
    if (terminalIsKnown)
        tcsetattr(STDIN_FILENO, TCSANOW, &terminalAtStart);
    say(faultApp);
    say(": ");
    say(sigdescr_np(signal));
    say("\n");
    raise(signal);
}

void catchFaults(const char* app)
{
    faultApp = app;
    terminalIsKnown = tcgetattr(STDIN_FILENO, &terminalAtStart) == 0;

    struct sigaction action = {};
    action.sa_handler = faultHandler;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : kFaultSignals) {
        struct sigaction present = {};
        // Keep a handler that a diagnostic tool has installed.
        if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_DFL)
            sigaction(signal, &action, nullptr);
    }
}

struct ProcessorTime {
    long long busy = 0;
    long long total = 0;
};

/// Ticks since the system's start: user, nice, system, idle, wait, interrupts.
ProcessorTime processorTime()
{
    ProcessorTime time;
    FILE* file = std::fopen("/proc/stat", "re");
    if (file == nullptr)
        return time;
    long long ticks = 0;
    for (int i = 0; i < 7 && std::fscanf(file, i == 0 ? "cpu %lld" : "%lld", &ticks) == 1; ++i) {
        time.total += ticks;
        time.busy += i == 3 || i == 4 ? 0 : ticks;
    }
    std::fclose(file);
    return time;
}

int percent(long long part, long long whole)
{
    if (whole <= 0 || part <= 0)
        return 0;
    return part >= whole ? 100 : static_cast<int>(part * 100 / whole);
}

} // namespace

void install_signal_handler(const char* app_name, int)
{
    enterDevice(app_name);
    openConsole();
    catchFaults(app_name);
}

int qln_app_init_with_instd(int, int)
{
    return 0;
}

int act_confirm(const char* message)
{
    std::printf("%sAre you sure? (y/n) ", message);
    std::fflush(stdout);

    // Read byte by byte, and no further than the line feed, because the input after it is the shell's next command.
    char answer[8];
    std::size_t length = 0;
    char c = '\0';
    while (read(STDIN_FILENO, &c, 1) == 1 && c != '\n')
        if (length < sizeof answer - 1)
            answer[length++] = c;
    answer[length] = '\0';
    if (c != '\n') {
        std::printf("\n");
        return 0;
    }
    return strcasecmp(answer, "y") == 0 || strcasecmp(answer, "yes") == 0;
}

int sys_factory_reset(int)
{
    std::fflush(stdout);
    constexpr char kCommand[] = "cd \"$CLI_SIM_ROOT\" && rm -f etc/admin-timeout.tmp && for file in etc/*.conf; do "
                                "cp \"$file\" tmp/.draft && mv tmp/.draft \"cfg/${file#etc/}\"; done && reboot";
    return std::system(kCommand) == 0 ? 0 : -1;
}

int read_sn(char* buffer, int size, int)
{
    simReadText("serial_number", buffer, static_cast<std::size_t>(size), simIdentity().qlnSn);
    return 0;
}

int valid_hostname(const char* name)
{
    const std::size_t length = std::strlen(name);
    if (length > kHostnameLimit)
        return -2;
    const std::size_t legal = std::strspn(name, "0123456789-_"
                                                "abcdefghijklmnopqrstuvwxyz"
                                                "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    return length != 0 && legal == length ? 0 : -1;
}

int get_full_version_string(char* buffer, int size, const char* model_prefix, int major, int minor, const char* build)
{
    std::snprintf(buffer, static_cast<std::size_t>(size), "%s-v%d.%02d-build%s", model_prefix, major, minor, build);
    return 0;
}

int sys_intf_status(const char* interface)
{
    return simInterfaceRuns(interface);
}

int get_cpu_usage_rate()
{
    const ProcessorTime before = processorTime();
    nanosleep(&kLoadSample, nullptr);
    const ProcessorTime after = processorTime();
    return percent(after.busy - before.busy, after.total - before.total);
}

int get_memory_usage_rate()
{
    FILE* file = std::fopen("/proc/meminfo", "re");
    if (file == nullptr)
        return 0;
    long long total = 0;
    long long available = 0;
    char line[128];
    while (std::fgets(line, sizeof line, file) != nullptr) {
        std::sscanf(line, "MemTotal: %lld", &total);
        std::sscanf(line, "MemAvailable: %lld", &available);
    }
    std::fclose(file);
    return percent(total - available, total);
}

int uptime_main(char* buffer, int size)
{
    double load[3] = {};
    getloadavg(load, 3);
    const std::time_t now = std::time(nullptr);
    tm clock = {};
    gmtime_r(&now, &clock);

    const int minutes = std::max(0, static_cast<int>(now) - simReadNumber("booted", static_cast<int>(now))) / 60;
    const int days = minutes / (24 * 60);
    std::snprintf(buffer, static_cast<std::size_t>(size),
                  "%02d:%02d:%02d UTC up %d day%s, %02d:%02d, load average: %.2f, %.2f, %.2f", clock.tm_hour,
                  clock.tm_min, clock.tm_sec, days, days == 1 ? "" : "s", minutes / 60 % 24, minutes % 60, load[0],
                  load[1], load[2]);
    return 0;
}

int sys_get_gpio_status(int line, int* value)
{
    char name[32];
    std::snprintf(name, sizeof name, "gpio/%d", line);
    *value = simReadNumber(name, 0);
    return 0;
}

int sys_set_gpio_status(int line, int value)
{
    char name[32];
    std::snprintf(name, sizeof name, "gpio/%d", line);
    return simWriteNumber(name, value) ? 0 : -1;
}

int sys_get_reset_key_status()
{
    return simReadNumber("reset_key", 1);
}

int sys_set_led_action(int led, int message)
{
    char name[32];
    std::snprintf(name, sizeof name, "leds/%d", led);
    return simWriteNumber(name, message) ? 0 : -1;
}

int sys_set_led_sys_test()
{
    return simWriteNumber("leds/test", 1) ? 0 : -1;
}
