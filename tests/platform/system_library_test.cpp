#include "platform/system_library.h"

#include <csignal>
#include <cstdlib>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/state.h"
#include "tests/support/device.h"

namespace
{

class SystemLibraryTest : public DeviceTest
{
protected:
    /// Runs `action` with `text` on standard input and keeps what it leaves unread in `rest_`.
    int withInput(const std::string& text, const std::function<int()>& action)
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        EXPECT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(ends[1]);
        const int terminal = dup(STDIN_FILENO);
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);

        int result = 0;
        said_ = outputOf([&] { result = action(); });

        rest_.clear();
        char c = '\0';
        while (read(STDIN_FILENO, &c, 1) == 1)
            rest_ += c;
        dup2(terminal, STDIN_FILENO);
        close(terminal);
        return result;
    }

    std::string said_;
    std::string rest_;
};

TEST_F(SystemLibraryTest, HostNames)
{
    const std::string longest(36, 'a');
    struct Row {
        std::string name;
        int result;
    };
    for (const Row& row : {
             Row{"kestrano-ap", 0},
             {"AZ_az-09", 0},
             {"-", 0},
             {longest, 0},
             {longest + "a", -2},
             {longest + ".", -2},
             {"", -1},
             {"a.b", -1},
             {"a b", -1},
             {"a\xc3\xa9", -1},
             {"a@", -1},
             {"a[", -1},
             {"a`", -1},
             {"a{", -1},
             {"a:", -1},
             {"a/", -1},
         })
        EXPECT_EQ(valid_hostname(row.name.c_str()), row.result) << row.name;
}

TEST_F(SystemLibraryTest, ConfirmationTakesOneLine)
{
    struct Row {
        std::string input;
        bool yes;
        std::string rest;
    };
    for (const Row& row : {
             Row{"y\nshow sys_conf\n", true, "show sys_conf\n"},
             {"Yes\n", true, ""},
             {"n\ny\n", false, "y\n"},
             {"\ny\n", false, "y\n"},
             {"yes, but not now\n", false, ""},
             {"yesyesyesyesyes\n", false, ""},
             {"y", false, ""},
             {"", false, ""},
         }) {
        const int answer = withInput(row.input, [] { return act_confirm("Sure about it!\n"); });
        EXPECT_EQ(answer != 0, row.yes) << row.input;
        EXPECT_EQ(rest_, row.rest) << row.input;
        EXPECT_EQ(said_.rfind("Sure about it!\nAre you sure? (y/n) ", 0), 0U) << said_;
    }
}

TEST_F(SystemLibraryTest, SerialNumberNeedsNoFile)
{
    char text[64] = "";
    EXPECT_EQ(read_sn(text, sizeof text, 0), 0);
    EXPECT_STREQ(text, "QPK315V4U1600001");

    simWriteText("serial_number", "SN-0815");
    read_sn(text, sizeof text, 0);
    EXPECT_STREQ(text, "SN-0815");

    char small[5] = {'x', 'x', 'x', 'x', 'x'};
    read_sn(small, 4, 0);
    EXPECT_STREQ(small, "SN-");
    EXPECT_EQ(small[4], 'x');
}

TEST_F(SystemLibraryTest, VersionString)
{
    char text[256];
    get_full_version_string(text, sizeof text, "QK91MV", 5, 4, "0241");
    EXPECT_STREQ(text, "QK91MV-v5.04-build0241");
}

TEST_F(SystemLibraryTest, RatesArePercentages)
{
    const int load = get_cpu_usage_rate();
    EXPECT_GE(load, 0);
    EXPECT_LE(load, 100);
    const int memory = get_memory_usage_rate();
    EXPECT_GT(memory, 0);
    EXPECT_LE(memory, 100);
}

TEST_F(SystemLibraryTest, UptimeStaysInItsBuffer)
{
    char text[256] = "";
    uptime_main(text, sizeof text);
    EXPECT_NE(std::string(text).find("load average: "), std::string::npos);
    EXPECT_EQ(std::string(text).find('\n'), std::string::npos);

    char small[9] = "xxxxxxxx";
    uptime_main(small, 8);
    EXPECT_EQ(small[7], '\0');
    EXPECT_EQ(std::string(small).size(), 7U);
}

TEST_F(SystemLibraryTest, LinesKeysAndInterfacesAreState)
{
    int value = -1;
    sys_get_gpio_status(57, &value);
    EXPECT_EQ(value, 0);
    sys_set_gpio_status(57, 1);
    sys_get_gpio_status(57, &value);
    EXPECT_EQ(value, 1);
    sys_get_gpio_status(5, &value);
    EXPECT_EQ(value, 0);

    EXPECT_NE(sys_get_reset_key_status(), 0);
    simWriteNumber("reset_key", 0);
    EXPECT_EQ(sys_get_reset_key_status(), 0);

    EXPECT_EQ(sys_intf_status("wlan0"), 0);
    simWriteNumber("interfaces/wlan0/up", 1);
    EXPECT_NE(sys_intf_status("wlan0"), 0);
    EXPECT_EQ(sys_intf_status("wlan0-va0"), 0);

    sys_set_led_action(3, 7);
    EXPECT_EQ(readFile("/sim/leds/3"), "7\n");
}

TEST_F(SystemLibraryTest, FactoryResetRestoresTheConfigurationAndRestarts)
{
    plantRecorder("reboot");
    for (const std::string name : {"/cw.conf", "/sys.conf"}) {
        writeFile("/etc" + name, "factory" + name);
        writeFile("/cfg" + name, "mine");
    }
    writeFile("/etc/profile", "alias");
    EXPECT_EQ(sys_factory_reset(1), 0);
    EXPECT_EQ(readFile("/cfg/cw.conf"), "factory/cw.conf");
    EXPECT_EQ(readFile("/cfg/sys.conf"), "factory/sys.conf");
    EXPECT_FALSE(exists("/cfg/profile"));
    EXPECT_EQ(calls(), "reboot \n");
}

TEST_F(SystemLibraryTest, StateFiles)
{
    char text[8];
    EXPECT_FALSE(simReadText("interfaces/wlan0/ssid", text, sizeof text, "fallback"));
    EXPECT_STREQ(text, "fallbac");
    EXPECT_EQ(simReadNumber("channel", 36), 36);

    EXPECT_TRUE(simWriteText("interfaces/wlan0/ssid", "with blank, and long"));
    EXPECT_TRUE(simReadText("interfaces/wlan0/ssid", text, sizeof text, ""));
    EXPECT_STREQ(text, "with bl");

    EXPECT_TRUE(simWriteText("interfaces/wlan0/ssid", ""));
    EXPECT_TRUE(simReadText("interfaces/wlan0/ssid", text, sizeof text, "fallback"));
    EXPECT_STREQ(text, "");

    // As somebody's editor or "echo -n" leaves it.
    writeFile("/sim/channel", "-12");
    EXPECT_EQ(simReadNumber("channel", 0), -12);

    writeFile("/sim/folder", "");
    EXPECT_FALSE(simWriteText("folder/value", "x"));
}

using SystemLibraryDeathTest = SystemLibraryTest;

TEST_F(SystemLibraryDeathTest, NoDeviceNoShell)
{
    const std::string noTools = path("/cfg");
    for (const char* root : {"", "/", "/etc/..", "/no/such/folder", noTools.c_str()}) {
        EXPECT_EXIT(
            {
                setenv("CLI_SIM_ROOT", root, 1);
                install_signal_handler("cli", 0);
            },
            testing::ExitedWithCode(1), "^cli: ")
            << root;
    }
    EXPECT_EXIT(
        {
            unsetenv("CLI_SIM_ROOT");
            install_signal_handler("cli", 0);
        },
        testing::ExitedWithCode(1), "CLI_SIM_ROOT");
}

TEST_F(SystemLibraryDeathTest, FaultIsNamedAndKills)
{
    EXPECT_EXIT(
        {
            install_signal_handler("cli", 0);
            std::abort();
        },
        testing::KilledBySignal(SIGABRT), "^cli: Aborted\n");
}

TEST_F(SystemLibraryTest, StandInsComeFirst)
{
    setenv("PATH", "/usr/bin:/bin", 1);
    install_signal_handler("cli", 0);
    EXPECT_EQ(std::getenv("PATH"), path("/bin") + ":/usr/bin:/bin");
}

TEST_F(SystemLibraryTest, WithoutRootNoDeviceFileOpens)
{
    unsetenv("CLI_SIM_ROOT");
    EXPECT_STREQ(DeviceFile("/etc/profile").path(), "");
}

} // namespace
