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

} // namespace
