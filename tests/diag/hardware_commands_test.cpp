#include "diag/hardware_commands.h"

#include "tests/diag/fake_platform.h"

using HardwareTest = FakePlatformTest;

TEST_F(HardwareTest, ShowsWhetherTheResetKeyIsPressed)
{
    EXPECT_EQ(run(rstktCommand, "rstkt"), "RERSET Key is UP.\n");
    fakePlatform.keyReleased = false;
    EXPECT_EQ(run(rstktCommand, "rstkt"), "RERSET Key is pressed DOWN.\n");
}

TEST_F(HardwareTest, ReadsAndWritesLines)
{
    const struct {
        const char* line;
        const char* output;
    } kCases[] = {
        {"gpio", "CMD Format: gpio r/w %d %d\n"},
        {"gpio r", "CMD Format: gpio r/w %d %d\n"},
        {"gpio x 5", ""},
        {"gpio r five", ""},
        {"gpio w 5", ""},
        {"gpio w 5 high", ""},
        {"gpio r 5", "Read gpio[5] = 0.\n"},
        {"gpio w 5 1", "Write gpio[5] = 1.\n"},
        {"gpio read 5th", "Read gpio[5] = 1.\n"},
        {"gpio w -1 77777777777", "Write gpio[-1] = 2147483647.\n"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(run(gpioCommand, test.line), test.output) << test.line;
    EXPECT_EQ(fakePlatform.lines, (std::map<int, int>{{5, 1}, {-1, 2147483647}}));
}

TEST_F(HardwareTest, DrivesThePowerLed)
{
    fakePlatform.ledTestStatus = -3;
    EXPECT_EQ(run(ledTestCommand, "led_test power off"), "proc_led_test gpio_num=57, gpio_data=1, ret=-3\n");
    EXPECT_EQ(fakePlatform.lines, (std::map<int, int>{{57, 1}}));
    EXPECT_EQ(run(ledTestCommand, "led_test power on"), "proc_led_test gpio_num=57, gpio_data=0, ret=-3\n");
    EXPECT_EQ(fakePlatform.lines, (std::map<int, int>{{57, 0}}));
    EXPECT_EQ(run(ledTestCommand, "led_test wlan on", -1), "");
    EXPECT_EQ(run(ledTestCommand, "led_test", -1), "");
}

TEST_F(HardwareTest, GrowsTheScanBufferTwice)
{
    const struct {
        const char* line;
        int needs;
        std::vector<std::string> scans;
    } kCases[] = {
        {"getscan 0", 16384, {"wlan0 16384"}},
        {"getscan -1", 16385, {"wlan0 16384", "wlan0 32768"}},
        {"getscan 7", 65535, {"wlan1 16384", "wlan1 32768", "wlan1 65535"}},
        {"getscan 1", 65536, {"wlan1 16384", "wlan1 32768", "wlan1 65535"}},
        {"getscan wlan0", 0, {}},
    };
    for (const auto& test : kCases) {
        fakePlatform.scans.clear();
        fakePlatform.scanNeeds = test.needs;
        EXPECT_EQ(run(getscanCommand, test.line), "") << test.line;
        EXPECT_EQ(fakePlatform.scans, test.scans) << test.line;
    }
    EXPECT_EQ(run(getscanCommand, "getscan"), "CMD Format: getscan %d\n");
}

TEST_F(HardwareTest, RunsThePerformanceTestQuietly)
{
    plantTool("sptest", "echo noise; echo \"sptest $#\" > \"$CLI_SIM_ROOT/tmp/calls\"");
    EXPECT_EQ(run(sptestCommand, "sptest"),
              "Please associate the SSID \"K91MV-2G\" and \"K91MV-5G\" with static IP address.\n");
    EXPECT_EQ(calls(), "sptest 0\n");
}
