#include "conf/conf_file.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "conf/config_tree.h"
#include "conf/cw_conf.h"
#include "conf/cw_file.h"
#include "conf/cw_items.h"
#include "conf/cw_show.h"
#include "conf/sys_conf.h"
#include "shell/executor.h"
#include "tests/support/device.h"

namespace fs = std::filesystem;

namespace
{

/// Reading a configuration file fails behind this many bytes, before which every other read is interrupted. Negative:
/// it is left alone.
ssize_t readableBytes = -1;

} // namespace

extern "C" ssize_t __real_read(int fd, void* bytes, size_t size);

// The linker puts this in the place of every read() of the shell.
extern "C" ssize_t __wrap_read(int fd, void* bytes, size_t size)
{
    static bool isInterrupted = false;
    const std::string link = "/proc/self/fd/" + std::to_string(fd);
    std::error_code none;
    if (readableBytes < 0 || fs::read_symlink(link, none).string().find("/cfg/") == std::string::npos)
        return __real_read(fd, bytes, size);
    isInterrupted = !isInterrupted;
    const ssize_t left = readableBytes - lseek(fd, 0, SEEK_CUR);
    errno = isInterrupted ? EINTR : EIO;
    return isInterrupted || left <= 0 ? -1 : __real_read(fd, bytes, std::min(size, static_cast<size_t>(left)));
}

namespace
{

constexpr char kFile[] = "/cfg/x.conf";
constexpr char kRefused[] = "    Error: Can not write /cfg/x.conf.\n";

constexpr char kReloading[] = "CAPWAP parameter changed, capwap daemon is reloading\n";
constexpr char kChanged[] = "Configuration has been changed, please save or drop it.\n";
constexpr char kUnreadable[] = "cwConfRead: Could not open conf file /cfg/cw.conf.\n";

/// A file as it is written.
std::string fileOf(const std::string& items)
{
    const std::string frame = "#=====================SYS CONF PARAMs========================\n";
    return frame + "#CONFIG system\n" + items + frame;
}

/// The file with the defaults, which every access point leaves the factory with.
std::string defaultFile()
{
    std::ostringstream text;
    text << std::ifstream(FACTORY_CONF).rdbuf();
    return text.str();
}

/// A device named "SN42" without configuration files; every tool that the handlers run is a recorder.
class ConfTest : public DeviceTest
{
protected:
    ConfTest()
    {
        std::memset(&cwConfig, 0, sizeof cwConfig);
        std::memset(&cwConfigSnapshot, 0, sizeof cwConfigSnapshot);
        std::memset(&sysConfig, 0, sizeof sysConfig);
        fs::create_directories(path("/sim"));
        writeFile("/sim/serial_number", "SN42\n");
        for (const char* tool : {"pkill", "ip", "hostname", "qln-set-hostname"})
            plantRecorder(tool);
    }

    ~ConfTest() override
    {
        readableBytes = -1;
        cwConfCopy(cwConfigSnapshot, cwConfig);
        cwConfDefault(cwConfig, kShellInstance);
        cwConfCopy(cwConfigSnapshot, cwConfig);
    }

    /// Runs a command line; its result is kept.
    std::string type(const std::string& line)
    {
        return outputOf([&] { result_ = executeLine(line.c_str()); });
    }

    /// What is said when a shell starts.
    static std::string prepare()
    {
        return outputOf([] { configPrepare(nullptr, nullptr); });
    }

    /// Writes a file whose modification time is `nanoseconds` after a certain second.
    void writeAt(int nanoseconds, const std::string& file, const std::string& text, time_t second = 1'000'000'000) const
    {
        writeFile(file, text);
        const timespec times[2] = {{0, UTIME_OMIT}, {second, nanoseconds}};
        ASSERT_EQ(utimensat(AT_FDCWD, path(file).c_str(), times, 0), 0);
    }

    std::string set(const char* key, const char* value)
    {
        return outputOf([&] { result_ = cwConfSetItem(key, value, cwConfig); });
    }

    /// The value of an item as the file has it; those of a list, each followed by a blank.
    static std::string valueOf(const char* key)
    {
        std::string text;
        const CwItem& item = *cwConfItem(key);
        forEachValue(item, cwConfig, [&](const char*, const char* value) {
            text += value;
            text += isCwList(item) ? " " : "";
        });
        return text;
    }

    /// A shell started on a device that saved its defaults some time ago.
    void startSaved()
    {
        writeAt(0, "/cfg/cw.conf", defaultFile());
        writeAt(0, "/cfg/sys.conf", fileOf("factorysn=F1\nhostname=ap1\nbaudrate=115200\nadmin-timeout=5\n"));
        EXPECT_EQ(prepare(), "");
    }

    bool showsChange() { return type("show cw_conf").ends_with(kChanged); }

    std::vector<std::string> linesOf(const std::string& text) const
    {
        writeFile(kFile, text);
        ConfLines lines(kFile);
        std::vector<std::string> taken;
        for (const char* line = lines.next(); line != nullptr; line = lines.next())
            taken.emplace_back(line);
        EXPECT_EQ(lines.count(), static_cast<int>(taken.size()));
        return taken;
    }

    /// "ok", what was said, or "silent".
    static std::string replace(const std::string& text)
    {
        ConfText content;
        content.append("%s", text.c_str());
        int result = 0;
        const std::string said = outputOf([&] { result = replaceConfFile(kFile, content); });
        return result == 0 ? "ok" + said : said.empty() ? "silent" : said;
    }

    /// As if the disk had room for a part of the text.
    static std::string replaceOnAFullDisk()
    {
        signal(SIGXFSZ, SIG_IGN);
        rlimit before;
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit full = {100, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        std::string outcome = replace(std::string(200, 'x'));
        setrlimit(RLIMIT_FSIZE, &before);
        return outcome;
    }

    int result_ = 0;
};

TEST_F(ConfTest, LinesArePiecesOf255Characters)
{
    using Lines = std::vector<std::string>;
    const std::string most(254, 'a');
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("\n\na=1"), (Lines{"", "", "a=1"}));
    EXPECT_EQ(linesOf(" a = 1\r\n"), Lines{" a = 1\r"});
    EXPECT_EQ(linesOf(most + "\nb\n"), (Lines{most, "b"}));
    EXPECT_EQ(linesOf(most + "bc\n"), (Lines{most + "b", "c"}));
    EXPECT_EQ(linesOf(std::string(600, 'c') + "\nd"),
              (Lines{std::string(255, 'c'), std::string(255, 'c'), std::string(90, 'c'), "d"}));
    EXPECT_EQ(linesOf(std::string("a\0b\n\0\nc\n", 8)), (Lines{"a", "", "c"}));
    EXPECT_EQ(linesOf(std::string(kConfFileLimit, '\n') + "late\n").size(), kConfFileLimit);
}

TEST_F(ConfTest, AFileEndsWhereReadingFails)
{
    const std::string text = "a=1\n" + std::string(4096, '#') + "\nb=2\n";
    readableBytes = 4096;
    EXPECT_EQ(linesOf(text).size(), 17U) << "no cut line";
    writeFile(kFile, text);
    ConfItems items("reader", kFile);
    EXPECT_EQ(outputOf([&] {
                  EXPECT_TRUE(items.next());
                  while (items.next())
                      ;
              }),
              "reader: Could not open conf file /cfg/x.conf.\n");
    EXPECT_TRUE(items.isOpen() && items.failed());
    readableBytes = 5000;
    EXPECT_EQ(linesOf(text).back(), "b=2") << "interrupted reads go on";
}

TEST_F(ConfTest, InAClosedFolderAFileIsWrittenInPlace)
{
    const uid_t user = geteuid();
    const uid_t someone = user != 0 ? user : 65534;
    writeFile(kFile, "an old text");
    ASSERT_EQ(chmod(path("").c_str(), 0755) | chmod(path(kFile).c_str(), 0666) | chmod(path("/cfg").c_str(), 0555), 0);
    ASSERT_EQ(seteuid(someone), 0);
    EXPECT_EQ(replaceOnAFullDisk(), kRefused);
    EXPECT_EQ(readFile(kFile), "an old text");
    EXPECT_EQ(replace("new"), "ok");
    EXPECT_EQ(readFile(kFile), "new");
    ASSERT_EQ(seteuid(user) | chmod(path(kFile).c_str(), 0444) | seteuid(someone), 0);
    EXPECT_EQ(replace("newer"), "silent");
    ASSERT_EQ(seteuid(user) | chmod(path("/cfg").c_str(), 0755) | unlink(path(kFile).c_str()) |
                  chmod(path("/cfg").c_str(), 0555) | seteuid(someone),
              0);
    EXPECT_EQ(replace("newest"), "silent") << "no file, and no place for one";
    ASSERT_EQ(seteuid(user) | chmod(path("/cfg").c_str(), 0755), 0);
}

// A reader tells two files apart by their times, also where a clock stands still or is a little late.
TEST_F(ConfTest, AReplacementIsNewer)
{
    ConfFileTime before;
    ConfFileTime now;
    writeAt(999'999'000, kFile, "old", time(nullptr));
    confFileTime(kFile, &before);
    ASSERT_EQ(replace("new"), "ok");
    EXPECT_EQ(confFileTime(kFile, &now), ConfFileStatus::Known);
    EXPECT_LT(std::pair(before.seconds, before.nanoseconds), std::pair(now.seconds, now.nanoseconds));
    EXPECT_EQ(confFileTime("/cfg/x.conf/none", &now), ConfFileStatus::Missing);
}

TEST_F(ConfTest, LongAndEmptyValues)
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

TEST_F(ConfTest, ASystemFileThatCannotBeReadCountsForNothing)
{
    const std::string unreadable = "sysConfRead: Could not open conf file /cfg/sys.conf.\n";
    const std::string text = fileOf("hostname=ap2\n");
    startSaved();
    fs::remove(path("/cfg/cw.conf"));
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

// The items that are neither in the file nor in the tree show their defaults nowhere else.
TEST_F(ConfTest, TheDisplayOfAllItems)
{
    startSaved();
    std::istringstream words(outputOf([] { cwConfShowItem(nullptr, cwConfig); }));
    std::string shown;
    for (std::string word; words >> word;)
        shown += word + " ";
    EXPECT_EQ(shown,
              "data-channel-sec : clear,dtls,ipsec dhcp-code : 138 plain-ctl : 0 ac-ctl-port : 5246 wtp-ctl-port : "
              "5246 static-ip-addr : 192.168.1.2 static-ip-netmask : 255.255.255.0 static-ip-gw : 192.168.1.1 "
              "multicast-addr : 224.0.1.140 static-ip-dns : 9.9.9.9 addr-mode : dhcp ap-mgmt-vlanid : 0 ac-ip-discover "
              ": 3 change-state-pending-timer : 25 data-channel-keepalive : 30 data-channel-dead-interval : 90 "
              "data-check-timer : 30 discovery-interval : 3 dtls-session-delete : 5 echo-interval : 30 "
              "image-data-start-timer : 30 max-discovery-interval : 5 max-failed-dtls-sess-retry : 3 "
              "retransmit-interval : 3 silent-interval : 30 statistics-timer : 120 wait-dtls : 31 wait-join : 21 "
              "discovery-count : 0 discovery-type : 0 failed-dtls-auth-fail-count : 0 failed-dtls-session-count : 0 "
              "idle-timeout : 300 max-discoveries : 3 max-retransmit : 3 report-interval : 30 StaCapRptInterval : 30 "
              "StaStatsRptInterval : 1 VapStatsRptInterval : 15 WidsRptInterval : 30 wtp-fallback : 1 config capwap "
              "wtp ac-ip-addr : add Add AC static IP address (A.B.C.D). del Delete AC static IP address (A.B.C.D). "
              "config capwap wtp ac-hostname : add Add AC hostname (1 - 255 string). del Delete AC hostname (1 - 255 "
              "string). admin-reboot-count : 0 frame-encap-type : 2 last-reboot-reason : 255 MacType : 0 preferred-ac "
              ": 0 reboot-count : 0 static-acl-table : 0 allow-dflt-https : 0 allow-dflt-ssh : 0 dflt_login_passwd : "
              "numStaMax : 512 numWtpMax : 16 security : 2 radio_mac : 0 dtlsPolicy : 135 vendorId_hw : 12356 hwVer : "
              "QWX40R vendorId_sw : 12356 swVer : 4.00 ssid : ");
    cwConfig.saved = 0;
    const std::string unsaved = outputOf([] { cwConfShowItem(nullptr, cwConfig); });
    EXPECT_TRUE(unsaved.ends_with(std::string("\n\n####  ").append(kChanged)));
}

TEST_F(ConfTest, CheckedNumbers)
{
    std::istringstream ranges(
        "data-channel-keepalive 10 30 echo-interval 10 60 max-discovery-interval 5 180 max-failed-dtls-sess-retry 1 3 "
        "statistics-timer 60 120 ac-ctl-port 1024 49150 wtp-ctl-port 1024 49150 plain-ctl 0 1 dhcp-code 128 254 "
        "multicast-ttl 1 255 idle-timeout 20 3600 max-discoveries 3 10 max-retransmit 3 5 report-interval 30 120 "
        "allow-dflt-https 0 2 allow-dflt-ssh 0 2 ap-mgmt-vlanid 0 4094");
    std::string word, least, most;
    startSaved();
    while (ranges >> word >> least >> most) {
        const char* key = word.c_str();
        for (const std::string& good : {least, most}) {
            EXPECT_EQ(set(key, good.c_str()), "") << key << good;
            EXPECT_EQ(valueOf(key), good) << key;
        }
        cwConfig.saved = 1;
        for (const std::string& bad : {std::to_string(std::stoi(least) - 1), std::to_string(std::stoi(most) + 1),
                                       most + "x", std::string("99999999999"), std::string(" 60"), std::string("x")}) {
            EXPECT_EQ(set(key, bad.c_str()), "    Error: Invalid parameter '" + bad + "'.\n") << key;
            EXPECT_EQ(result_, -1) << key;
        }
        set(key, "");
        EXPECT_EQ(valueOf(key), least == "0" ? "0" : most) << key << ": nothing counts as 0";
        EXPECT_EQ(cwConfig.saved, least == "0" ? 0 : 1) << key;
    }
}

TEST_F(ConfTest, OtherValues)
{
    const std::string ones(300, '1');
    const std::string address = "    Error: Invalid IP address '%'\n";
    const std::string refused = "    Error: Invalid parameter '%'.\n";
    const std::string option = "    Error: Invalid option (%). Options: [clear,dtls,ipsec]\n" + refused;
    const std::string unknown = "    Unknown configuration item '";
    const struct {
        const char* keys;
        std::string said;                                        ///< a percent sign stands for the value
        std::vector<std::pair<std::string, std::string>> values; ///< with what is stored
    } cases[] = {
        {"ac-ip-discover change-state-pending-timer data-channel-dead-interval data-check-timer discovery-interval "
         "dtls-session-delete image-data-start-timer retransmit-interval silent-interval wait-dtls wait-join "
         "discovery-count failed-dtls-auth-fail-count failed-dtls-session-count wtp-fallback admin-reboot-count "
         "frame-encap-type last-reboot-reason MacType preferred-ac reboot-count static-acl-table WTPLinkFailureCount "
         "numStaMax numWtpMax StaCapRptInterval StaStatsRptInterval VapStatsRptInterval WidsRptInterval",
         "",
         {{"70000", "4464"}, {"-1", "65535"}, {"12 sec", "12"}}},
        {"sniff_pkt_ctl security radio_mac dtlsPolicy", "", {{"260", "4"}, {"99999999999", "255"}, {"1", "1"}}},
        {"vendorId_hw", "", {{"", "0"}, {"x", "0"}, {" \t12x", "12"}, {"+5", "5"}, {"- 5", "0"}, {"-5", "-5"}}},
        {"vendorId_hw", "", {{"-2147483648", "-2147483648"}, {"-2147483649", "-2147483648"}, {ones, "2147483647"}}},
        {"discovery-type", "", {{"1", "1"}, {"auto", "0"}, {"dns", "3"}, {"quillsky", "7"}}},
        {"discovery-type", refused, {{"4", "7"}, {"Static", "7"}, {"07", "7"}}},
        {"addr-mode", "", {{"static", "static"}, {"dhcp", "dhcp"}}},
        {"addr-mode", refused, {{"DHCP", "dhcp"}}},
        {"data-channel-sec", "", {{" ", ""}, {"  dtlsipsec, ,clear,", "clear,dtls,ipsec"}, {"ipsec", "ipsec"}}},
        {"ap-dtlsPolicy", "", {{"clear", "clear"}}},
        {"data-channel-sec", option, {{",dtls", "clear"}, {"dtls clea", "clear"}, {"dtls;ipsec", "clear"}}},
        {"ap-mgmt-vlanid", "ERR: vlan id 898 and 899 are reserved for internal use.\n", {{"898", "0"}, {"899x", "0"}}},
        {"allow-dflt-telnet allow-dflt-http", "", {{"1", "0"}, {"x", "0"}}},
        {"static-ip-addr", "", {{"1.2.3", "1.2.0.3"}}},
        {"static-ip-addr", address, {{"x.y", "1.2.0.3"}, {" 10.0.0.1", "1.2.0.3"}}},
        {"static-ip-netmask static-ip-gw", "", {{"0x0a.1\r", "10.0.0.1"}, {"255.0.0.0\v0", "255.0.0.0"}}},
        {"static-ip-netmask static-ip-gw", address, {{"255.0.0.256", "255.0.0.0"}, {"", "255.0.0.0"}}},
        {"static-ip-dns multicast-addr", "", {{"8.8.8.8 " + ones, "8.8.8.8"}, {"224", "0.0.0.224"}}},
        {"static-ip-dns", address, {{std::string(300, '0'), "0.0.0.224"}}},
        {"multicast-addr", "    Error: Invalid Multicast address '%'\n", {{"all", "0.0.0.224"}}},
        {"name location", "", {{ones, ones.substr(0, 35)}}},
        {"ssid", "", {{ones, ones.substr(0, 31)}}},
        {"hwVer", "", {{ones, ones}}},
        {"dflt_login_passwd", unknown + "dflt_login_passwd'\n", {{"5", ""}}},
    };
    startSaved();
    for (const auto& [keys, said, values] : cases) {
        std::istringstream words(keys);
        for (std::string key; words >> key;)
            for (const auto& [value, stored] : values) {
                std::string expected = said;
                for (std::size_t place = 0; (place = expected.find('%')) != std::string::npos;)
                    expected.replace(place, 1, value);
                const bool isRefused = said.ends_with(refused) || said.starts_with(unknown);
                cwConfig.saved = 1;
                EXPECT_EQ(set(key.c_str(), value.c_str()), expected) << key;
                EXPECT_EQ(valueOf(key.c_str()), stored) << key << " " << value;
                EXPECT_EQ(cwConfig.saved, isRefused ? 1 : 0) << key << " " << value;
                EXPECT_EQ(result_, isRefused ? -1 : 0) << key << " " << value;
            }
    }
    EXPECT_EQ(cwConfig.dataChannelSec, 0x03);
    set("dtlsPolicy", "1");
    EXPECT_EQ(valueOf("data-channel-sec"), "") << "one bit of clear alone is not shown";
    set("ApScanRptTimer", "65537");
    for (const int timer : cwConfig.apScanRptTimer)
        EXPECT_EQ(timer, 1);
    EXPECT_STREQ(sysConfig.staticAddr, "1.2.0.3");
    EXPECT_STREQ(cwConfigSnapshot.hwVer, "QWX40R") << "the snapshot keeps the text it was taken with";
    for (const std::string key : {"", "Echo-interval"})
        EXPECT_EQ(set(key.c_str(), "5"), unknown + key + "'\n");
}

// Nobody has seen what is in the file, so the record stays and nothing is written over it.
TEST_F(ConfTest, AFileThatCannotBeReadCountsForNothing)
{
    const std::string text = "hwVer=B\nhwVer=C\nac-ip-addr=10.0.0.1\nstatic-ip-addr=10.0.0.2\n" + std::string(90, '#');
    startSaved();
    type("config capwap wtp ac-hostname add a");
    writeAt(1, "/cfg/cw.conf", text);
    readableBytes = 80;
    EXPECT_EQ(type("config capwap wtp dhcp-code 200"), kUnreadable);
    const std::string shown = type("show cw_conf");
    EXPECT_TRUE(shown.starts_with(kUnreadable) && shown.ends_with(kChanged)) << shown;
    EXPECT_NE(shown.find("\tdhcp-code=200\n"), std::string::npos);
    EXPECT_NE(shown.find("\tac-hostname=a\n"), std::string::npos);
    EXPECT_STREQ(sysConfig.staticAddr, "192.168.1.2");
    EXPECT_STREQ(cwConfigSnapshot.hwVer, "QWX40R");
    EXPECT_EQ(type("drop cw_conf"), kUnreadable);
    EXPECT_EQ(type("save cw_conf"), kUnreadable);
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(readFile("/cfg/cw.conf"), text);
    readableBytes = -1;
    EXPECT_EQ(type("config capwap wtp ac-ip-addr list"), "    acStaticIpAddrListCnt        : 1\n"
                                                         "    ac-ip-addr                   : 10.0.0.1 1\n");
    EXPECT_FALSE(showsChange());

    readableBytes = 80;
    type("drop cw_conf");
    readableBytes = -1;
    std::filesystem::remove(path("/cfg/cw.conf"));
    EXPECT_EQ(type("save cw_conf"), kReloading) << "what is gone can be written";
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
}

// The snapshot stays behind until a later second, so nothing may be concluded from it.
TEST_F(ConfTest, ASaveInTheSecondOfTheReadIsRepeated)
{
    const auto awaitNextSecond = [] {
        for (const time_t now = time(nullptr); time(nullptr) == now;)
            usleep(1000);
        usleep(20'000); // the clock of files is a little late
    };
    awaitNextSecond();
    writeFile("/cfg/cw.conf", defaultFile());
    prepare();
    for (const char* code : {"200", "138", "138"}) {
        set("dhcp-code", code);
        EXPECT_EQ(type("save cw_conf"), kReloading);
        EXPECT_FALSE(showsChange());
        EXPECT_NE(readFile("/cfg/cw.conf").find("\ndhcp-code=" + std::string(code) + "\n"), std::string::npos);
    }
    awaitNextSecond();
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(type("save cw_conf"), "");
}

TEST(CwAssertDeathTest, DiesOnlyOfZero)
{
    cw_assert(-1);
    EXPECT_DEATH(cw_assert(0), "");
}

} // namespace
