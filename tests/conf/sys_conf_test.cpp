#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include "conf/replay.h"
#include "tests/conf/conf_test.h"

namespace
{

/// A file as it is written.
std::string fileOf(const std::string& items)
{
    const std::string frame = "#=====================SYS CONF PARAMs========================\n";
    return frame + "#CONFIG system\n" + items + frame;
}

std::string savedFile()
{
    return fileOf("factorysn=F1\nhostname=ap1\nbaudrate=115200\nadmin-timeout=5\n");
}

class SysConfTest : public ConfTest
{
protected:
    void startSaved()
    {
        writeAt(0, "/cfg/sys.conf", savedFile());
        EXPECT_EQ(prepare(), "");
    }

    static std::string replay()
    {
        return outputOf([] { EXPECT_EQ(confReplay(), 0); });
    }
};

TEST_F(SysConfTest, LongAndEmptyValues)
{
    startSaved();
    EXPECT_EQ(type("config system mgmt-addr " + std::string(1020, '1')), "    Error: Command line too long.\n");
    EXPECT_EQ(type("cfg -a WTP_NAME=" + std::string(1010, 'x')), "    Error: Command line too long.\n");
    EXPECT_EQ(calls(), "");
    type("cfg -a AC_HOSTNAME_1=" + std::string(300, 'h'));
    EXPECT_EQ(valueOf("ac-hostname"), std::string(255, 'h') + " ");

    sysConfSetItem("factorysn", "", sysConfig);
    sysConfSetItem("hostname", std::string(300, 'n').c_str(), sysConfig);
    sysConfSetItem("baudrate", "x", sysConfig);
    sysConfSetItem("admin-timeout", "-99999999999", sysConfig);
    EXPECT_EQ(sysConfWrite(), 0);
    EXPECT_EQ(readFile("/cfg/sys.conf"),
              fileOf("hostname=" + std::string(255, 'n') + "\nbaudrate=0\nadmin-timeout=-2147483648\n"));
    std::filesystem::remove_all(path("/cfg"));
    type("config system hostname ap4");
    EXPECT_EQ(result_, -1);
}

TEST_F(SysConfTest, AFileThatCannotBeReadCountsForNothing)
{
    const std::string unreadable = "sysConfRead: Could not open conf file /cfg/sys.conf.\n";
    const std::string text = fileOf("hostname=ap2\n");
    startSaved();
    writeAt(1, "/cfg/sys.conf", text);
    readableBytes = 100;
    EXPECT_EQ(outputOf([] { sysConfRefresh(sysConfig); }), unreadable);
    EXPECT_EQ(outputOf([] { sysConfRefresh(sysConfig); }), "") << "not before every prompt";
    for (const char* line : {"config system admin-timeout 9", "config system hostname ap3"}) {
        EXPECT_EQ(type(line), unreadable);
        EXPECT_EQ(result_, -1);
    }
    EXPECT_STREQ(sysConfig.hostname, "ap1");
    EXPECT_EQ(prepare(), unreadable);
    sysConfig.hostname[0] = '\0';
    EXPECT_EQ(prepare(), unreadable);
    EXPECT_STREQ(sysConfig.hostname, "SN42") << "the prompt needs a name";
    EXPECT_TRUE(type("cfg -c").starts_with(unreadable));
    EXPECT_EQ(readFile("/cfg/sys.conf"), text);
    readableBytes = -1;
    EXPECT_EQ(type("config system admin-timeout 9"), "");
    EXPECT_EQ(readFile("/cfg/sys.conf"), fileOf("factorysn=F1\nhostname=ap2\nbaudrate=115200\nadmin-timeout=9\n"));
}

// Each changes an item of its own, which nobody else may set back.
TEST_F(SysConfTest, TwoShellsLoseNothing)
{
    startSaved();
    const pid_t other = fork();
    const std::string item = other == 0 ? "factorysn" : "admin-timeout";
    bool isLost = false;
    for (int i = 1; i <= 60; ++i) {
        const std::string value = std::to_string(i);
        type(std::string("config system ").append(item).append(" ").append(value));
        usleep(500);
        isLost = isLost || readFile("/cfg/sys.conf").find("\n" + item + "=" + value + "\n") == std::string::npos;
    }
    if (other == 0)
        _exit(isLost ? 1 : 0);
    int status = 0;
    waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(isLost);
    EXPECT_EQ(readFile("/cfg/sys.conf"), fileOf("factorysn=60\nhostname=ap1\nbaudrate=115200\nadmin-timeout=60\n"));
}

TEST_F(SysConfTest, ConsoleSpeed)
{
    startSaved();
    writeFile("/dev/console", "");
    EXPECT_EQ(type("config system baudrate 9600"), "\r\n    Error: Can not get console options\n");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(readFile("/cfg/sys.conf"), savedFile());
    std::filesystem::remove(path("/dev/console"));

    const int console = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_EQ(grantpt(console) | unlockpt(console), 0);
    std::filesystem::create_symlink(ptsname(console), path("/dev/console"));
    const std::pair<std::string, speed_t> speeds[] = {
        {"9600", B9600}, {"19200", B19200}, {"38400", B38400}, {"57600", B57600}, {"115200", B115200}};
    for (const auto& [speed, constant] : speeds) {
        EXPECT_EQ(type("config system baudrate " + speed), "");
        termios options;
        ASSERT_EQ(tcgetattr(console, &options), 0);
        EXPECT_EQ(cfgetospeed(&options), constant) << speed;
        EXPECT_NE(readFile("/cfg/sys.conf").find("\nbaudrate=" + speed + "\n"), std::string::npos);
    }
    close(console);
}

TEST_F(SysConfTest, ReplayReportsAndAppliesNothing)
{
    EXPECT_EQ(replay(), "    Error: Failed to open conf /cfg/sys.conf\n");
    startSaved();
    EXPECT_EQ(replay(), "");
    writeAt(1, "/cfg/sys.conf",
            "# any PARAMs line\n#comment\nhostname=ap1\ncolour=blue\n\nno item\nbaudrate=hostname\n"
            "mgmt-addr PARAMs\n");
    prepare();
    EXPECT_EQ(replay(), "    Error: Can't find sub comd colour in node system\n"
                        "_sysConfRead: Invalid line ''\n"
                        "    Error: Failed to parse conf line \n"
                        "_sysConfRead: Invalid line 'no item'\n"
                        "    Error: Failed to parse conf line no item\n"
                        "    hostname                 : ap1\n");
    EXPECT_EQ(calls(), "");
}

} // namespace
