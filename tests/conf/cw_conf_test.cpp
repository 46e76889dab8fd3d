#include <algorithm>
#include <ctime>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <unistd.h>
#include <utility>
#include <vector>

#include "conf/cw_conf.h"
#include "conf/cw_lists.h"
#include "conf/cw_show.h"
#include "tests/conf/conf_test.h"

namespace
{

/// The titles of the file's sections, and of those of the display.
constexpr std::pair<const char*, const char*> kTitles[] = {
    {"#CW proto timers:\n", "# CW Protocol Timer Parameters :\n"},
    {"#CW proto variables:\n", "# CW Protocol Variables:\n"},
    {"#CW WTP saved variables:\n", "# CW WTP saved variables:\n"},
    {"#CW AC saved variables:\n", "# CW AC saved variables:\n"},
};

/// The rows of the single-item display with the defaults.
constexpr char kRows[] =
    "data-channel-sec=clear,dtls,ipsec dhcp-code=138 plain-ctl=0 ac-ctl-port=5246 wtp-ctl-port=5246 "
    "static-ip-addr=192.168.1.2 static-ip-netmask=255.255.255.0 static-ip-gw=192.168.1.1 multicast-addr=224.0.1.140 "
    "static-ip-dns=9.9.9.9 addr-mode=dhcp ap-mgmt-vlanid=0 ac-ip-discover=3 change-state-pending-timer=25 "
    "data-channel-keepalive=30 data-channel-dead-interval=90 data-check-timer=30 discovery-interval=3 "
    "dtls-session-delete=5 echo-interval=30 image-data-start-timer=30 max-discovery-interval=5 "
    "max-failed-dtls-sess-retry=3 retransmit-interval=3 silent-interval=30 statistics-timer=120 wait-dtls=31 "
    "wait-join=21 discovery-count=0 discovery-type=0 failed-dtls-auth-fail-count=0 failed-dtls-session-count=0 "
    "idle-timeout=300 max-discoveries=3 max-retransmit=3 report-interval=30 StaCapRptInterval=30 "
    "StaStatsRptInterval=1 VapStatsRptInterval=15 WidsRptInterval=30 wtp-fallback=1 ac-ip-addr ac-hostname "
    "admin-reboot-count=0 frame-encap-type=2 last-reboot-reason=255 MacType=0 preferred-ac=0 reboot-count=0 "
    "static-acl-table=0 allow-dflt-https=0 allow-dflt-ssh=0 dflt_login_passwd= numStaMax=512 numWtpMax=16 security=2 "
    "radio_mac=0 dtlsPolicy=135 vendorId_hw=12356 hwVer=QWX40R vendorId_sw=12356 swVer=4.00 ssid=";

std::string rowOf(const std::string& key, const std::string& value)
{
    if (key == "ac-ip-addr" || key == "ac-hostname") {
        const std::string blanks(30, ' ');
        const std::string what =
            key == "ac-ip-addr" ? "AC static IP address (A.B.C.D)" : "AC hostname (1 - 255 string)";
        return "config capwap wtp " + key + " :\n        add" + blanks + "Add " + what + ".\n        del" + blanks +
               "Delete " + what + ".\n\n";
    }
    const std::size_t width = key == "allow-dflt-ssh"                             ? 26
                              : key == "ac-ctl-port" || key == "allow-dflt-https" ? 28
                                                                                  : 29;
    return "    " + key + std::string(width - key.size(), ' ') + ": " + value + "\n";
}

constexpr char kFrame[] = "#=====================CW CONF PARAMs========================\n";
constexpr char kReloading[] = "CAPWAP parameter changed, capwap daemon is reloading\n";
constexpr char kChanged[] = "Configuration has been changed, please save or drop it.\n";
constexpr char kUnreadable[] = "cwConfRead: Could not open conf file /cfg/cw.conf.\n";

using Edits = std::initializer_list<std::pair<const char*, const char*>>;

std::string edited(std::string text, Edits edits)
{
    for (const auto& [from, to] : edits)
        text.replace(text.find(from), std::strlen(from), to);
    return text;
}

/// The file with the defaults, which every access point leaves the factory with.
std::string defaultFile()
{
    std::ostringstream text;
    text << std::ifstream(FACTORY_CONF).rdbuf();
    return text.str();
}

/// What `show cw_conf` makes of a file: other titles, a tab before each item, not all that surrounds them.
std::string displayOf(const std::string& file)
{
    std::string shown = edited(file, {{"# QK91MV-v5.04-build0241\n", ""},
                                      {"allow-dflt-telnet=0\nallow-dflt-http=0\n", ""},
                                      {"#Wireless temp:\n", ""}});
    for (const auto& titles : kTitles)
        shown = edited(shown, {titles});
    std::istringstream lines(shown);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += (line[0] == '#' ? "" : "\t") + line + "\n";
    return text;
}

class CwConfTest : public ConfTest
{
protected:
    /// A shell started on a device that saved its defaults some time ago.
    void startSaved()
    {
        writeAt(0, "/cfg/cw.conf", defaultFile());
        prepare();
    }

    bool showsChange() { return type("show cw_conf").ends_with(kChanged); }
};

TEST_F(CwConfTest, DefaultsAreUnsavedUntilWrittenWhole)
{
    EXPECT_EQ(prepare(), "sysConfRead: Could not open conf file /cfg/sys.conf.\n");
    EXPECT_STREQ(sysConfig.hostname, "SN42");
    std::string rows;
    std::istringstream words(kRows);
    for (std::string word; words >> word;) {
        const std::size_t end = std::min(word.find('='), word.size());
        const std::string key = word.substr(0, end);
        const std::string row = rowOf(key, word.substr(std::min(end + 1, word.size())));
        EXPECT_EQ(outputOf([&] { cwConfShowItem(key.c_str(), cwConfig); }), row);
        rows += row;
    }
    EXPECT_EQ(outputOf([] { cwConfShowItem(nullptr, cwConfig); }), rows + "\n####  " + kChanged);
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(readFile("/cfg/cw.conf"), defaultFile());
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
    EXPECT_EQ(type("save cw_conf"), "");
    EXPECT_EQ(type("show cw_conf"), displayOf(defaultFile()));
}

TEST_F(CwConfTest, ShowsAndWritesAChangedRecord)
{
    const std::string changed =
        edited(defaultFile(), {{"discovery-type=0", "discovery-type=6"},
                               {"allow-dflt-telnet", "ac-ip-addr=10.0.0.1 1\nac-ip-addr=10.0.0.2 1\n"
                                                     "ac-hostname=ac.example\nallow-dflt-telnet"},
                               {"addr-mode=dhcp", "addr-mode=static"},
                               {"data-channel-sec=clear,dtls,ipsec", "data-channel-sec=dtls,ipsec"}});
    startSaved();
    expectTranscript("> config capwap wtp ac-ip-addr add 10.0.0.1; config capwap wtp ac-ip-addr add 10.0.0.2\n"
                     "> config capwap wtp ac-hostname add ac.example; config capwap wtp addr-mode static\n"
                     "> config capwap proto discovery-type 6; config capwap wtp data-channel-sec dtls, ipsec\n");
    EXPECT_EQ(type("show cw_conf"), displayOf(changed) + kChanged);
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(readFile("/cfg/cw.conf"), changed);
    EXPECT_EQ(type("show cw_conf"), displayOf(changed));
}

TEST_F(CwConfTest, CheckedNumbers)
{
    std::istringstream ranges(
        "data-channel-keepalive 10 30 echo-interval 10 60 max-discovery-interval 5 180 max-failed-dtls-sess-retry 1 3 "
        "statistics-timer 60 120 ac-ctl-port 1024 49150 wtp-ctl-port 1024 49150 plain-ctl 0 1 dhcp-code 128 254 "
        "multicast-ttl 1 255 idle-timeout 20 3600 max-discoveries 3 10 max-retransmit 3 5 report-interval 30 120 "
        "allow-dflt-https 0 2 allow-dflt-ssh 0 2 ap-mgmt-vlanid 0 4094");
    std::string word;
    std::string least;
    std::string most;
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

TEST_F(CwConfTest, OtherValues)
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
        {"vendorId_sw", "", {{"2147483647", "2147483647"}, {"2147483648", "2147483647"}}},
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

TEST_F(CwConfTest, BadLinesOfTheFile)
{
    writeFile("/cfg/cw.conf", "#comment\n\n #indented\necho-interval=40\r\nno item\n=5\nwait-join = 4\nwait-dtls= 7\n"
                              "ac-ip-addr=10.0.0.1 1\nac-ip-addr=10.0.0.1 garbage\nac-ip-addr=nowhere\n"
                              "ac-hostname=a=b\nac-hostname=" +
                                  std::string(242, 'h') + "=tail\nac-hostname=\nac-hostname=d\n");
    EXPECT_EQ(prepare(), "cwConfRead: /cfg/cw.conf Line 3: Invalid line ' #indented'\n"
                         "    Error: Invalid parameter '40\r'.\n"
                         "cwConfRead: /cfg/cw.conf Line 5: Invalid line 'no item'\n"
                         "    Unknown configuration item ''\n"
                         "    Unknown configuration item 'wait-join '\n"
                         "    Error: Invalid AC IP address 'nowhere'\n"
                         "    Error: Invalid parameter 'nowhere'.\n"
                         "cwConfRead: /cfg/cw.conf Line 14: Invalid line 'tail'\n"
                         "    Error: Too many ac-hostname entries, 'd' ignored.\n"
                         "sysConfRead: Could not open conf file /cfg/sys.conf.\n");
    EXPECT_EQ(cwConfig.saved, 1);
    EXPECT_EQ(valueOf("wait-dtls"), "7");
    EXPECT_EQ(valueOf("ac-ip-addr"), "10.0.0.1 1 10.0.0.1 1 ");
    EXPECT_EQ(valueOf("ac-hostname"), "a=b " + std::string(242, 'h') + "=  ");

    std::string many;
    for (int i = 1; i <= 17; ++i)
        many += "ac-ip-addr=10.0.0." + std::to_string(i) + "\n";
    writeAt(0, "/cfg/cw.conf", many);
    EXPECT_EQ(type("config capwap wtp ac-ip-addr del 10.0.0.3"),
              "    Error: Too many ac-ip-addr entries, '10.0.0.17' ignored.\n");
    EXPECT_EQ(valueOf("ac-hostname"), "") << "a list without lines is empty";
    EXPECT_EQ(valueOf("wait-dtls"), "7") << "an item without a line keeps its value";
    EXPECT_EQ(valueOf("ac-ip-addr").substr(0, 45), "10.0.0.1 1 10.0.0.2 1 10.0.0.4 1 10.0.0.5 1 1");
    EXPECT_TRUE(valueOf("ac-ip-addr").ends_with("10.0.0.15 1 10.0.0.16 1 "));
}

// Nobody has seen what is in the file, so the record stays and nothing is written over it.
TEST_F(CwConfTest, AFileThatCannotBeReadCountsForNothing)
{
    const std::string text = "hwVer=B\nhwVer=C\nac-ip-addr=10.0.0.1\nstatic-ip-addr=10.0.0.2\n" + std::string(90, '#');
    startSaved();
    type("config capwap wtp ac-hostname add a");
    writeAt(1, "/cfg/cw.conf", text);
    readableBytes = 80;
    EXPECT_EQ(type("config capwap wtp dhcp-code 200"), kUnreadable);
    EXPECT_EQ(type("show cw_conf"),
              kUnreadable +
                  displayOf(edited(defaultFile(), {{"dhcp-code=138", "dhcp-code=200"},
                                                   {"allow-dflt-telnet", "ac-hostname=a\nallow-dflt-telnet"}})) +
                  kChanged);
    EXPECT_STREQ(sysConfig.staticAddr, "192.168.1.2");
    EXPECT_STREQ(cwConfigSnapshot.hwVer, "QWX40R");
    EXPECT_EQ(type("drop cw_conf"), kUnreadable);
    expectTranscript(std::string("> save cw_conf\n") + kUnreadable, -1);
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

TEST_F(CwConfTest, ItemCommandByItsNumberOfWords)
{
    startSaved();
    expectTranscript(R"(> config capwap wtp dhcp-code
    dhcp-code                    : 138
> config capwap wtp multicast-ttl; config capwap wtp dhcp-code 200; config capwap wtp dhcp-code 210 211
> config capwap wtp dhcp-code
    dhcp-code                    : 200
> config capwap wtp ac-ip-addr 10.0.0.1
    acStaticIpAddrListCnt        : 0
> config capwap wtp ac-ip-addr add 10.0.0.x
    Error: Invalid AC IP address '10.0.0.x'
> config capwap wtp ac-ip-addr add 10.0.0.1; config capwap wtp ac-ip-addr add 10.1
Duplicate AC IP address '10.1'
> config capwap wtp ac-ip-addr add 10.0.0.2 more words; config capwap wtp ac-ip-addr put 10.0.0.9 x
> config capwap wtp ac-ip-addr add 10.0.0.3; config capwap wtp ac-ip-addr add 10.0.0.3
AC Static IP address reached the upper limit
> config capwap wtp ac-ip-addr del 10.0.0.9
    Failed to find '10.0.0.9' in list
> config capwap wtp ac-ip-addr del 10.0.0.2; config capwap wtp ac-ip-addr list
    acStaticIpAddrListCnt        : 2
    ac-ip-addr                   : 10.0.0.1 1
    ac-ip-addr                   : 10.0.0.3 1
> config capwap wtp ac-hostname add a; config capwap wtp ac-hostname add b; config capwap wtp ac-hostname add a
> config capwap wtp ac-hostname add d; config capwap wtp ac-hostname del b; config capwap wtp ac-hostname x
    acHostNameCnt                : 2
    ac-hostname                  : a
    ac-hostname                  : a
> config capwap wtp ac-hostname del b
    Failed to find 'b' in list
> config capwap wtp addr-mode del static
    Failed to find 'static' in list
> config capwap wtp data-channel-sec dtls, ipsec; config capwap wtp data-channel-sec
    data-channel-sec             : dtls,ipsec
)");
}

TEST_F(CwConfTest, SaveComparesWithTheSnapshot)
{
    startSaved();
    set("echo-interval", "40");
    set("echo-interval", "30");
    expectTranscript(
        "> config capwap wtp ac-ip-addr add 10.0.0.1; config capwap wtp ac-ip-addr del 10.0.0.1; save cw_conf\n");
    EXPECT_TRUE(showsChange()) << "an edit that was undone reads as a change until the next drop";
    EXPECT_EQ(calls(), "");

    set("echo-interval", "40");
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_FALSE(showsChange());
    EXPECT_EQ(type("save cw_conf"), "");
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
    EXPECT_NE(readFile("/cfg/cw.conf").find("\necho-interval=40\n"), std::string::npos);
    EXPECT_EQ(cwConfig.echoLimit, 60) << "derived from the default alone";
}

// The snapshot stays behind until a later second, so nothing may be concluded from it.
TEST_F(CwConfTest, ASaveInTheSecondOfTheReadIsRepeated)
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
        EXPECT_EQ(readFile("/cfg/cw.conf"),
                  edited(defaultFile(), {{"dhcp-code=138", ("dhcp-code=" + std::string(code)).c_str()}}));
    }
    awaitNextSecond();
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(type("save cw_conf"), "");
}

TEST_F(CwConfTest, DropReadsTheFileOverTheRecord)
{
    writeAt(0, "/cfg/cw.conf", defaultFile(), 0);
    prepare();
    EXPECT_FALSE(showsChange()) << "a file from the beginning of time is a file";
    set("echo-interval", "40");
    set("location", "roof");
    expectTranscript("> config capwap wtp ac-ip-addr add 10.0.0.1; drop cw_conf\n");
    EXPECT_EQ(valueOf("echo-interval"), "30");
    EXPECT_EQ(valueOf("ac-ip-addr"), "");
    EXPECT_EQ(valueOf("location"), "roof");
    EXPECT_FALSE(showsChange());
    EXPECT_EQ(type("save cw_conf"), "");
    for (int i = 0; i < 1000; ++i)
        cwConfDrop();
}

TEST_F(CwConfTest, AnotherProgramsChangeIsSeen)
{
    int changes = 0;
    startSaved();
    set("echo-interval", "40");
    for (const char* line :
         {"show cw_conf", "config capwap proto idle-timeout", "config capwap wtp dhcp-code 200", "cfg -s", "cfg -e",
          "config capwap wtp ac-ip-addr add 10.0.0.1", "config capwap wtp ac-hostname del a",
          "cfg -a AC_IPADDR_1=10.0.0.1", "cfg -a AC_HOSTNAME_1=a", "cfg -a DNS_SERVER=8.8.8.8"}) {
        const std::string value = std::to_string(++changes);
        writeAt(changes, "/cfg/cw.conf", "wait-join=" + value + "\n");
        type(line);
        EXPECT_EQ(valueOf("wait-join"), value) << line;
    }
    EXPECT_EQ(valueOf("echo-interval"), "40");
    writeAt(0, "/cfg/cw.conf", "wait-join=50\n");
    EXPECT_EQ(type("save cw_conf"), kReloading) << "a save writes the record as it stands";
    EXPECT_NE(readFile("/cfg/cw.conf").find("wait-join=10\n"), std::string::npos);
}

TEST(CwAssertDeathTest, DiesOnlyOfZero)
{
    cw_assert(-1);
    EXPECT_DEATH(cw_assert(0), "");
}

} // namespace
