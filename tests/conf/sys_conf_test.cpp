#include <cstdlib>
#include <fcntl.h>
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
        writeFile("/cfg/sys.conf", savedFile());
        EXPECT_EQ(prepare(), "");
    }

    static std::string replay()
    {
        return outputOf([] { EXPECT_EQ(confReplay(), 0); });
    }

    /// A terminal in the place of the console; the caller closes it.
    int plantConsole() const
    {
        const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
        grantpt(terminal);
        unlockpt(terminal);
        std::filesystem::create_symlink(ptsname(terminal), path("/dev/console"));
        return terminal;
    }
};

TEST_F(SysConfTest, ReadsShowsAndWritesTheRecord)
{
    startSaved();
    sysConfSetItem("mgmt-addr", "10.0.0.1/8", sysConfig);
    EXPECT_EQ(type("show sys_conf"), "    factorysn                : F1\n"
                                     "    hostname                 : ap1\n"
                                     "    static-addr              : \n"
                                     "    baudrate                 : 115200\n"
                                     "    admin-timeout            : 5\n");
    EXPECT_EQ(sysConfWrite(), 0);
    EXPECT_EQ(sysConfig.saved, 1U);
    EXPECT_EQ(readFile("/cfg/sys.conf"), savedFile());

    sysConfSetItem("factorysn", "", sysConfig);
    sysConfSetItem("hostname", std::string(300, 'n').c_str(), sysConfig);
    sysConfSetItem("baudrate", "x", sysConfig);
    sysConfSetItem("admin-timeout", "-99999999999", sysConfig);
    EXPECT_EQ(sysConfWrite(), 0);
    EXPECT_EQ(readFile("/cfg/sys.conf"),
              fileOf("hostname=" + std::string(255, 'n') + "\nbaudrate=0\nadmin-timeout=-2147483648\n"));
}

TEST_F(SysConfTest, AFileWithoutANameLeavesTheSerialNumber)
{
    writeFile("/cfg/sys.conf", "baudrate=9600\nhostname\ncolour=blue\n");
    EXPECT_EQ(prepare(), "sysConfRead: /cfg/sys.conf Line 2: Invalid line 'hostname'\n");
    EXPECT_EQ(type("show sys_conf"), "    hostname                 : SN42\n"
                                     "    static-addr              : \n"
                                     "    baudrate                 : 9600\n"
                                     "    admin-timeout            : 0\n");
}

TEST_F(SysConfTest, ItemsAreShownOrSetByTheNumberOfWords)
{
    startSaved();
    EXPECT_EQ(type("config system hostname"), "    hostname                 : ap1\n");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(type("config system mgmt-addr"), "    static-addr              : \n");
    for (const char* item : {"factorysn", "mgmt-addr", "hostname", "baudrate", "admin-timeout"}) {
        EXPECT_EQ(type("config system " + std::string(item) + " 1 2"), "    Error: Too many parameters!\n");
        EXPECT_EQ(result_, -1);
    }
    EXPECT_EQ(calls(), "");
    EXPECT_EQ(readFile("/cfg/sys.conf"), savedFile());
}

TEST_F(SysConfTest, ARefusedValueChangesNothing)
{
    const std::pair<std::string, std::string> cases[] = {
        {"factorysn " + std::string(64, '9'), "    Error: The length must be less than 63.\n"},
        {"hostname " + std::string(37, 'a'), "    Error: The string is too long, the upper limit is 36.\n"},
        {"hostname ap.1", "    Error: The legal characters are numbers (0-9), letters(a-z,A-z) and special characters "
                          "- and _.\n"},
        {"baudrate 9600x", "    Error: The parameter is not digital!\n"},
        {"baudrate 4800", "    Error: Invalid parameter '4800'.\n"},
        {"baudrate 9600", "\r\n    Error: Can not open console device!\n"},
        {"admin-timeout 0", "    Error: Invalid parameter '0'.\n"},
        {"admin-timeout 481", "    Error: Invalid parameter '481'.\n"},
        {"admin-timeout 5m", "    Error: Invalid parameter '5m'.\n"},
        {"admin-timeout -5", "    Error: Invalid parameter '-5'.\n"},
        {"admin-timeout 99999999999", "    Error: Invalid parameter '99999999999'.\n"},
        {"mgmt-addr " + std::string(1020, '1'), "    Error: Command line too long.\n"},
    };
    startSaved();
    for (const auto& [words, said] : cases) {
        EXPECT_EQ(type("config system " + words), said);
        EXPECT_EQ(result_, -1) << words;
    }
    EXPECT_EQ(calls(), "");
    EXPECT_EQ(readFile("/cfg/sys.conf"), savedFile());
    EXPECT_FALSE(exists("/etc/admin-timeout.tmp"));
}

TEST_F(SysConfTest, ASetValueIsWrittenAndTakesEffect)
{
    startSaved();
    for (const std::string& words :
         {"factorysn " + std::string(63, '9'), std::string("hostname ap_2"), std::string("admin-timeout 480")}) {
        EXPECT_EQ(type("config system " + words), "");
        EXPECT_EQ(result_, 0) << words;
    }
    EXPECT_EQ(readFile("/cfg/sys.conf"),
              fileOf("factorysn=" + std::string(63, '9') + "\nhostname=ap_2\nbaudrate=115200\nadmin-timeout=480\n"));
    EXPECT_EQ(calls(), "hostname ap_2\nqln-set-hostname ap_2 --no-save\n");
    EXPECT_EQ(readFile("/etc/admin-timeout.tmp"), "28800\n");

    std::filesystem::remove_all(path("/cfg"));
    EXPECT_EQ(type("config system hostname ap3"), "");
    EXPECT_EQ(result_, -1) << "the file cannot be written";
}

TEST_F(SysConfTest, ManagementAddress)
{
    startSaved();
    EXPECT_EQ(type("config system mgmt-addr 10.0.0.1/8"), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(calls(), "ip addr flush dev eth0\nip addr add 10.0.0.1/8 dev eth0\n");
    EXPECT_EQ(readFile("/cfg/sys.conf"), savedFile());

    plantTool("ip", "exit 2");
    std::filesystem::remove(path("/cfg/sys.conf"));
    EXPECT_EQ(type("config system mgmt-addr nowhere"), "");
    EXPECT_EQ(result_, 2 << 8) << "the raw status";
    EXPECT_FALSE(exists("/cfg/sys.conf"));
}

TEST_F(SysConfTest, ConsoleSpeed)
{
    startSaved();
    writeFile("/dev/console", "");
    EXPECT_EQ(type("config system baudrate 9600"), "\r\n    Error: Can not get console options\n");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(readFile("/cfg/sys.conf"), savedFile());
    std::filesystem::remove(path("/dev/console"));

    const int console = plantConsole();
    for (const auto& [speed, constant] :
         {std::pair("9600", B9600), std::pair("19200", B19200), std::pair("38400", B38400), std::pair("57600", B57600),
          std::pair("115200", B115200)}) {
        EXPECT_EQ(type("config system baudrate " + std::string(speed)), "");
        EXPECT_EQ(result_, 0);
        termios options;
        ASSERT_EQ(tcgetattr(console, &options), 0);
        EXPECT_EQ(cfgetospeed(&options), static_cast<speed_t>(constant)) << speed;
        EXPECT_NE(readFile("/cfg/sys.conf").find("\nbaudrate=" + std::string(speed) + "\n"), std::string::npos);
    }
    close(console);
}

TEST_F(SysConfTest, ReplayReportsAndAppliesNothing)
{
    EXPECT_EQ(replay(), "    Error: Failed to open conf /cfg/sys.conf\n");
    startSaved();
    EXPECT_EQ(replay(), "");
    writeFile("/cfg/sys.conf", "# any PARAMs line\n#comment\nhostname=ap1\ncolour=blue\n\nno item\nbaudrate=hostname\n"
                               "mgmt-addr PARAMs\n");
    EXPECT_EQ(replay(), "    Error: Can't find sub comd colour in node system\n"
                        "_sysConfRead: Invalid line ''\n"
                        "    Error: Failed to parse conf line \n"
                        "_sysConfRead: Invalid line 'no item'\n"
                        "    Error: Failed to parse conf line no item\n"
                        "    hostname                 : ap1\n");
    EXPECT_EQ(calls(), "");
}

} // namespace
