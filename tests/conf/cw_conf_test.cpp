#include <algorithm>
#include <initializer_list>
#include <sstream>
#include <utility>
#include <vector>

#include "conf/cw_conf.h"
#include "conf/cw_lists.h"
#include "conf/cw_show.h"
#include "tests/conf/conf_test.h"

namespace
{

constexpr char kDefaultFile[] = R"(# QK91MV-v5.04-build0241
#=====================CW CONF PARAMs========================
#CW proto timers:
ac-ip-discover=3
change-state-pending-timer=25
data-channel-keepalive=30
data-channel-dead-interval=90
data-check-timer=30
discovery-interval=3
dtls-session-delete=5
echo-interval=30
image-data-start-timer=30
max-discovery-interval=5
max-failed-dtls-sess-retry=3
retransmit-interval=3
silent-interval=30
statistics-timer=120
wait-dtls=31
wait-join=21
#CW proto variables:
discovery-count=0
discovery-type=0
idle-timeout=300
max-discoveries=3
max-retransmit=3
report-interval=30
#CW WTP saved variables:
allow-dflt-telnet=0
allow-dflt-http=0
allow-dflt-https=0
allow-dflt-ssh=0
ac-ctl-port=5246
wtp-ctl-port=5246
plain-ctl=0
addr-mode=dhcp
static-ip-addr=192.168.1.2
static-ip-netmask=255.255.255.0
static-ip-gw=192.168.1.1
static-ip-dns=9.9.9.9
multicast-addr=224.0.1.140
multicast-ttl=1
dhcp-code=138
ap-mgmt-vlanid=0
data-channel-sec=clear,dtls,ipsec
#CW AC saved variables:
numStaMax=512
numWtpMax=16
security=2
radio_mac=0
vendorId_hw=12356
hwVer=QWX40R
vendorId_sw=12356
swVer=4.00
#Wireless temp:
#=====================CW CONF PARAMs========================
)";

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
    if (key == "ac-ip-addr")
        return "config capwap wtp ac-ip-addr :\n"
               "        add                              Add AC static IP address (A.B.C.D).\n"
               "        del                              Delete AC static IP address (A.B.C.D).\n\n";
    if (key == "ac-hostname")
        return "config capwap wtp ac-hostname :\n"
               "        add                              Add AC hostname (1 - 255 string).\n"
               "        del                              Delete AC hostname (1 - 255 string).\n\n";
    if (key == "ac-ctl-port")
        return "    ac-ctl-port                 : " + value + "\n";
    if (key == "allow-dflt-https")
        return "    allow-dflt-https            : " + value + "\n";
    if (key == "allow-dflt-ssh")
        return "    allow-dflt-ssh            : " + value + "\n";
    return "    " + key + std::string(29 - key.size(), ' ') + ": " + value + "\n";
}

constexpr char kReloading[] = "CAPWAP parameter changed, capwap daemon is reloading\n";
constexpr char kChanged[] = "Configuration has been changed, please save or drop it.\n";

struct Edit {
    const char* from;
    const char* to;
};

std::string edited(std::string text, std::initializer_list<Edit> edits)
{
    for (const auto& [from, to] : edits)
        text.replace(text.find(from), std::strlen(from), to);
    return text;
}

/// What `show cw_conf` makes of a file: other titles, a tab before each item, not all that surrounds them.
std::string displayOf(const std::string& file)
{
    std::istringstream lines(edited(file, {{"# QK91MV-v5.04-build0241\n", ""},
                                           {"#CW proto timers:", "# CW Protocol Timer Parameters :"},
                                           {"#CW proto variables:", "# CW Protocol Variables:"},
                                           {"#CW WTP saved", "# CW WTP saved"},
                                           {"#CW AC saved", "# CW AC saved"},
                                           {"allow-dflt-telnet=0\nallow-dflt-http=0\n", ""},
                                           {"#Wireless temp:\n", ""}}));
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += (line[0] == '#' ? "" : "\t") + line + "\n";
    return text;
}

class CwConfTest : public ConfTest
{
protected:
    /// A shell started on a device that has saved its defaults.
    void startSaved()
    {
        writeFile("/cfg/cw.conf", kDefaultFile);
        age("/cfg/cw.conf");
        prepare();
    }

    /// Makes a file old, so that a rewritten one has another time.
    void age(const std::string& file) const
    {
        std::filesystem::last_write_time(path(file),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(++hours_));
    }

    bool showsChange() { return type("show cw_conf").ends_with(kChanged); }

private:
    mutable int hours_ = 0;
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
    EXPECT_EQ(outputOf([] { cwConfShowItem(nullptr, cwConfig); }),
              rows + "\n####  Configuration has been changed, please save or drop it.\n");
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(readFile("/cfg/cw.conf"), kDefaultFile);
    EXPECT_EQ(calls(), "pkill cwWtpd\n");
    EXPECT_EQ(type("save cw_conf"), "");
    EXPECT_FALSE(showsChange());
}

TEST_F(CwConfTest, ShowsAndWritesAChangedRecord)
{
    const std::string changed =
        edited(kDefaultFile, {{"discovery-type=0", "discovery-type=6"},
                              {"allow-dflt-telnet", "ac-ip-addr=10.0.0.1 1\nac-ip-addr=10.0.0.2 1\n"
                                                    "ac-hostname=ac.example\nallow-dflt-telnet"},
                              {"addr-mode=dhcp", "addr-mode=static"},
                              {"data-channel-sec=clear,dtls,ipsec", "data-channel-sec=dtls,ipsec"}});
    startSaved();
    EXPECT_EQ(type("show cw_conf"), displayOf(kDefaultFile));
    for (const char* line :
         {"config capwap wtp ac-ip-addr add 10.0.0.1", "config capwap wtp ac-ip-addr add 10.0.0.2",
          "config capwap wtp ac-hostname add ac.example", "config capwap wtp addr-mode static",
          "config capwap proto discovery-type multicast", "config capwap wtp data-channel-sec dtls, ipsec"})
        EXPECT_EQ(type(line), "") << line;
    EXPECT_EQ(type("show cw_conf"), displayOf(changed) + kChanged);
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(readFile("/cfg/cw.conf"), changed);
    EXPECT_EQ(type("show cw_conf"), displayOf(changed));
}

TEST_F(CwConfTest, CheckedNumbers)
{
    struct {
        const char* key;
        int low;
        int high;
    } const kRanges[] = {
        {"data-channel-keepalive", 10, 30},
        {"echo-interval", 10, 60},
        {"max-discovery-interval", 5, 180},
        {"max-failed-dtls-sess-retry", 1, 3},
        {"statistics-timer", 60, 120},
        {"ac-ctl-port", 1024, 49150},
        {"wtp-ctl-port", 1024, 49150},
        {"plain-ctl", 0, 1},
        {"dhcp-code", 128, 254},
        {"multicast-ttl", 1, 255},
        {"idle-timeout", 20, 3600},
        {"max-discoveries", 3, 10},
        {"max-retransmit", 3, 5},
        {"report-interval", 30, 120},
        {"allow-dflt-https", 0, 2},
        {"allow-dflt-ssh", 0, 2},
        {"ap-mgmt-vlanid", 0, 4094},
    };
    startSaved();
    for (const auto& [key, low, high] : kRanges) {
        for (const int good : {low, high}) {
            cwConfig.saved = 1;
            EXPECT_EQ(set(key, std::to_string(good).c_str()), "") << key << good;
            EXPECT_EQ(valueOf(key), std::to_string(good)) << key;
            EXPECT_EQ(cwConfig.saved, 0) << key;
        }
        cwConfig.saved = 1;
        for (const std::string& bad : {std::to_string(low - 1), std::to_string(high + 1), std::to_string(high) + "x",
                                       std::string("99999999999"), std::string(" 60"), std::string("x")}) {
            EXPECT_EQ(set(key, bad.c_str()), "    Error: Invalid parameter '" + bad + "'.\n") << key;
            EXPECT_EQ(result_, -1) << key;
        }
        set(key, "");
        EXPECT_EQ(result_, low == 0 ? 0 : -1) << key << ": nothing counts as 0";
        EXPECT_EQ(valueOf(key), std::to_string(low == 0 ? 0 : high)) << key;
        EXPECT_EQ(cwConfig.saved, low == 0 ? 0 : 1) << key;
    }
}

TEST_F(CwConfTest, StoredNumbersAreCutToTheirFields)
{
    struct {
        const char* keys;
        std::vector<std::pair<const char*, const char*>> values;
    } const kCases[] = {
        {"ac-ip-discover change-state-pending-timer data-channel-dead-interval data-check-timer discovery-interval "
         "dtls-session-delete image-data-start-timer retransmit-interval silent-interval wait-dtls wait-join "
         "discovery-count failed-dtls-auth-fail-count failed-dtls-session-count wtp-fallback admin-reboot-count "
         "frame-encap-type last-reboot-reason MacType preferred-ac reboot-count static-acl-table WTPLinkFailureCount "
         "numStaMax numWtpMax StaCapRptInterval StaStatsRptInterval VapStatsRptInterval WidsRptInterval",
         {{"70000", "4464"}, {"-1", "65535"}, {"12 sec", "12"}}},
        {"sniff_pkt_ctl security radio_mac dtlsPolicy", {{"260", "4"}, {"99999999999", "255"}}},
        {"vendorId_hw vendorId_sw",
         {{"", "0"},
          {"x", "0"},
          {" \t12x", "12"},
          {"+5", "5"},
          {"- 5", "0"},
          {"-5", "-5"},
          {"2147483647", "2147483647"},
          {"2147483648", "2147483647"},
          {"-2147483648", "-2147483648"},
          {"-2147483649", "-2147483648"},
          {"99999999999999999999999", "2147483647"}}},
    };
    startSaved();
    for (const auto& [keys, values] : kCases) {
        std::istringstream words(keys);
        for (std::string key; words >> key;)
            for (const auto& [text, stored] : values) {
                EXPECT_EQ(set(key.c_str(), text), "") << key;
                EXPECT_EQ(valueOf(key.c_str()), stored) << key << " " << text;
            }
    }
    EXPECT_EQ(set("ApScanRptTimer", "65537"), "");
    for (const int timer : cwConfig.apScanRptTimer)
        EXPECT_EQ(timer, 1);
}

TEST_F(CwConfTest, KeywordsAndOptionLists)
{
    struct {
        const char* key;
        const char* value;
        const char* stored; ///< null: refused
    } const kCases[] = {
        {"discovery-type", "auto", "0"},        {"discovery-type", "1", "1"},
        {"discovery-type", "dns", "3"},         {"discovery-type", "4", nullptr},
        {"discovery-type", "quillsky", "7"},    {"discovery-type", "Static", nullptr},
        {"discovery-type", "07", nullptr},      {"addr-mode", "static", "static"},
        {"addr-mode", "DHCP", nullptr},         {"addr-mode", "dhcp", "dhcp"},
        {"data-channel-sec", "ipsec", "ipsec"}, {"data-channel-sec", "  dtlsipsec, ,clear,", "clear,dtls,ipsec"},
        {"ap-dtlsPolicy", "clear", "clear"},    {"data-channel-sec", " ", ""},
    };
    startSaved();
    for (const auto& [key, value, stored] : kCases) {
        const std::string before = valueOf(key);
        EXPECT_EQ(set(key, value),
                  stored != nullptr ? "" : "    Error: Invalid parameter '" + std::string(value) + "'.\n");
        EXPECT_EQ(valueOf(key), stored != nullptr ? stored : before) << key << " " << value;
    }
    set("data-channel-sec", "clear");
    EXPECT_EQ(cwConfig.dataChannelSec, 0x03);
    for (const char* bad : {",dtls", "dtls clea", "dtls;ipsec"})
        EXPECT_EQ(set("data-channel-sec", bad), "    Error: Invalid option (" + std::string(bad) +
                                                    "). Options: [clear,dtls,ipsec]\n    Error: Invalid parameter '" +
                                                    bad + "'.\n");
    EXPECT_EQ(cwConfig.dataChannelSec, 0x03);
    set("dtlsPolicy", "1");
    EXPECT_EQ(valueOf("data-channel-sec"), "") << "one bit of clear alone is not shown";
}

TEST_F(CwConfTest, KeysThatAnswerAndStillCount)
{
    struct {
        const char* key;
        const char* value;
        const char* said;
        const char* stored;
    } const kCases[] = {
        {"ap-mgmt-vlanid", "898", "ERR: vlan id 898 and 899 are reserved for internal use.\n", "0"},
        {"ap-mgmt-vlanid", "899x", "ERR: vlan id 898 and 899 are reserved for internal use.\n", "0"},
        {"allow-dflt-telnet", "1", "", "0"},
        {"allow-dflt-http", "x", "", "0"},
        {"static-ip-addr", "x.y", "    Error: Invalid IP address 'x.y'\n", "192.168.1.2"},
        {"static-ip-addr", "1.2.3", "", "1.2.0.3"},
        {"static-ip-netmask", "255.0.0.256", "    Error: Invalid IP address '255.0.0.256'\n", "255.255.255.0"},
        {"static-ip-gw", "0x0a.1", "", "10.0.0.1"},
        {"static-ip-dns", "", "    Error: Invalid IP address ''\n", "9.9.9.9"},
        {"multicast-addr", "224", "", "0.0.0.224"},
        {"multicast-addr", "all", "    Error: Invalid Multicast address 'all'\n", "0.0.0.224"},
    };
    startSaved();
    for (const auto& [key, value, said, stored] : kCases) {
        cwConfig.saved = 1;
        EXPECT_EQ(set(key, value), said);
        EXPECT_EQ(result_, 0) << key << " " << value;
        EXPECT_EQ(cwConfig.saved, 0) << key << " " << value;
        EXPECT_EQ(valueOf(key), stored) << key << " " << value;
    }
    EXPECT_STREQ(sysConfig.staticAddr, "1.2.0.3");
    cwConfig.saved = 1;
    for (const char* unknown : {"", "Echo-interval", "dflt_login_passwd"})
        EXPECT_EQ(set(unknown, "5"), "    Unknown configuration item '" + std::string(unknown) + "'\n");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(cwConfig.saved, 1);
}

TEST_F(CwConfTest, TextsAreCutToTheirFields)
{
    const std::string text(400, 't');
    startSaved();
    for (const auto& [key, most] : {std::pair("name", 35), std::pair("location", 35), std::pair("ssid", 31)}) {
        EXPECT_EQ(set(key, text.c_str()), "");
        EXPECT_EQ(valueOf(key), text.substr(0, static_cast<std::size_t>(most)));
    }
    set("hwVer", text.c_str());
    EXPECT_EQ(valueOf("hwVer"), text);
    EXPECT_STREQ(cwConfigSnapshot.hwVer, "QWX40R") << "the snapshot keeps the text it was taken with";
}

TEST_F(CwConfTest, BadLinesOfTheFile)
{
    writeFile("/cfg/cw.conf", "#comment\n\n #indented\necho-interval=40\r\nno item\n=5\nwait-join = 4\nwait-dtls= 7\n"
                              "ac-ip-addr=10.0.0.1 1\nac-ip-addr=10.0.0.1 garbage\nac-ip-addr=nowhere\n"
                              "ac-hostname=a=b\nac-hostname=" +
                                  std::string(242, 'h') + "=tail\nac-hostname=\nac-hostname=d\n");
    EXPECT_EQ(outputOf([] {
                  cwConfDefault(cwConfig, 2);
                  EXPECT_EQ(cwConfRead(cwConfig), 0);
              }),
              "cwConfRead: /cfg/cw.conf Line 3: Invalid line ' #indented'\n"
              "    Error: Invalid parameter '40\r'.\n"
              "cwConfRead: /cfg/cw.conf Line 5: Invalid line 'no item'\n"
              "    Unknown configuration item ''\n"
              "    Unknown configuration item 'wait-join '\n"
              "    Error: Invalid AC IP address 'nowhere'\n"
              "    Error: Invalid parameter 'nowhere'.\n"
              "cwConfRead: /cfg/cw.conf Line 14: Invalid line 'tail'\n"
              "    Error: Too many ac-hostname entries, 'd' ignored.\n");
    EXPECT_EQ(cwConfig.saved, 1);
    EXPECT_EQ(valueOf("wait-dtls"), "7");
    EXPECT_EQ(valueOf("ac-ip-addr"), "10.0.0.1 1 10.0.0.1 1 ");
    EXPECT_EQ(valueOf("ac-hostname"), "a=b " + std::string(242, 'h') + "=  ");

    std::string many;
    for (int i = 1; i <= 17; ++i)
        many += "ac-ip-addr=10.0.0." + std::to_string(i) + "\n";
    writeFile("/cfg/cw.conf", many);
    EXPECT_EQ(outputOf([] { cwConfRead(cwConfig); }), "    Error: Too many ac-ip-addr entries, '10.0.0.17' ignored.\n");
    EXPECT_EQ(cwConfig.acAddressCount, 16);
    EXPECT_EQ(valueOf("ac-hostname"), "") << "a list without lines is empty";
    EXPECT_EQ(valueOf("wait-dtls"), "7") << "an item without a line keeps its value";
    EXPECT_EQ(type("config capwap wtp ac-ip-addr del 10.0.0.3"), "");
    EXPECT_EQ(valueOf("ac-ip-addr").substr(0, 45), "10.0.0.1 1 10.0.0.2 1 10.0.0.4 1 10.0.0.5 1 1");
    EXPECT_TRUE(valueOf("ac-ip-addr").ends_with("10.0.0.15 1 10.0.0.16 1 "));
}

TEST_F(CwConfTest, AFileThatIsNone)
{
    std::filesystem::create_directory(path("/cfg/cw.conf"));
    EXPECT_EQ(outputOf([] { EXPECT_EQ(cwConfRead(cwConfig), -1); }),
              "cwConfRead: Could not open conf file /cfg/cw.conf.\n");
    prepare();
    EXPECT_EQ(type("show cw_conf"), displayOf(kDefaultFile) + kChanged) << "said once";
    set("echo-interval", "40");
    EXPECT_EQ(type("save cw_conf"), "");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(calls(), "");
}

TEST_F(CwConfTest, ItemCommandByItsNumberOfWords)
{
    struct {
        const char* line;
        const char* said;
    } const kCases[] = {
        {"config capwap wtp dhcp-code", "    dhcp-code                    : 138\n"},
        {"config capwap wtp multicast-ttl", ""},
        {"config capwap wtp dhcp-code 200", ""},
        {"config capwap wtp dhcp-code", "    dhcp-code                    : 200\n"},
        {"config capwap wtp dhcp-code 210 211", ""},
        {"config capwap wtp dhcp-code", "    dhcp-code                    : 200\n"},
        {"config capwap proto idle-timeout 0", "    Error: Invalid parameter '0'.\n"},
        {"config capwap wtp ac-ip-addr 10.0.0.1", "    acStaticIpAddrListCnt        : 0\n"},
        {"config capwap wtp ac-ip-addr add", "    acStaticIpAddrListCnt        : 0\n"},
        {"config capwap wtp ac-ip-addr add 10.0.0.x", "    Error: Invalid AC IP address '10.0.0.x'\n"},
        {"config capwap wtp ac-ip-addr add 10.0.0.1", ""},
        {"config capwap wtp ac-ip-addr add 10.1", "Duplicate AC IP address '10.1'\n"},
        {"config capwap wtp ac-ip-addr add 10.0.0.2 more words", ""},
        {"config capwap wtp ac-ip-addr put 10.0.0.9 x", ""},
        {"config capwap wtp ac-ip-addr add 10.0.0.3", ""},
        {"config capwap wtp ac-ip-addr add 10.0.0.3", "AC Static IP address reached the upper limit\n"},
        {"config capwap wtp ac-ip-addr del 10.0.0.9", "    Failed to find '10.0.0.9' in list\n"},
        {"config capwap wtp ac-ip-addr del ten", "    Error: Invalid AC IP address 'ten'\n"},
        {"config capwap wtp ac-ip-addr del 10.0.0.2", ""},
        {"config capwap wtp ac-ip-addr list", "    acStaticIpAddrListCnt        : 2\n"
                                              "    ac-ip-addr                   : 10.0.0.1 1\n"
                                              "    ac-ip-addr                   : 10.0.0.3 1\n"},
        {"config capwap wtp ac-hostname add a", ""},
        {"config capwap wtp ac-hostname add b", ""},
        {"config capwap wtp ac-hostname add a", ""},
        {"config capwap wtp ac-hostname add d", ""},
        {"config capwap wtp ac-hostname x", "    acHostNameCnt                : 3\n"
                                            "    ac-hostname                  : a\n"
                                            "    ac-hostname                  : b\n"
                                            "    ac-hostname                  : a\n"},
        {"config capwap wtp ac-hostname del b", ""},
        {"config capwap wtp ac-hostname del a", ""},
        {"config capwap wtp ac-hostname x", "    acHostNameCnt                : 1\n"
                                            "    ac-hostname                  : a\n"},
        {"config capwap wtp ac-hostname del b", "    Failed to find 'b' in list\n"},
        {"config capwap wtp addr-mode del static", "    Failed to find 'static' in list\n"},
        {"config capwap wtp data-channel-sec dtls, ipsec", ""},
        {"config capwap wtp data-channel-sec", "    data-channel-sec             : dtls,ipsec\n"},
        {"config capwap wtp data-channel-sec add dtls",
         "    Error: Invalid option (add dtls). Options: [clear,dtls,ipsec]\n"
         "    Error: Invalid parameter 'add dtls'.\n"},
    };
    startSaved();
    for (const auto& [line, said] : kCases) {
        EXPECT_EQ(type(line), said) << line;
        EXPECT_EQ(result_, 0) << line;
    }
}

TEST_F(CwConfTest, SaveComparesWithTheSnapshot)
{
    startSaved();
    EXPECT_EQ(type("save cw_conf"), "");
    set("echo-interval", "40");
    set("echo-interval", "30");
    type("config capwap wtp ac-ip-addr add 10.0.0.1");
    type("config capwap wtp ac-ip-addr del 10.0.0.1");
    EXPECT_EQ(type("save cw_conf"), "");
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

TEST_F(CwConfTest, ASaveInTheSecondOfTheReadIsRepeated)
{
    startSaved();
    set("wait-join", "22");
    plantTool("pkill", "touch -r \"$CLI_SIM_ROOT/etc/time\" \"$CLI_SIM_ROOT/cfg/cw.conf\"");
    writeFile("/etc/time", "");
    std::filesystem::last_write_time(path("/etc/time"), std::filesystem::last_write_time(path("/cfg/cw.conf")));
    EXPECT_EQ(type("save cw_conf"), kReloading);
    EXPECT_EQ(type("save cw_conf"), kReloading);
}

TEST_F(CwConfTest, DropReadsTheFileOverTheRecord)
{
    startSaved();
    set("echo-interval", "40");
    set("location", "roof");
    type("config capwap wtp ac-ip-addr add 10.0.0.1");
    EXPECT_EQ(type("drop cw_conf"), "");
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
    startSaved();
    set("echo-interval", "40");
    set("wait-join", "40");
    writeFile("/cfg/cw.conf", "wait-join=50\n");
    EXPECT_EQ(type("config capwap proto idle-timeout"), "    idle-timeout                 : 300\n");
    EXPECT_EQ(valueOf("wait-join"), "50");
    EXPECT_EQ(valueOf("echo-interval"), "40");
    EXPECT_EQ(type("save cw_conf"), "");
}

TEST(CwAssertDeathTest, DiesOnlyOfZero)
{
    cw_assert(-1);
    EXPECT_DEATH(cw_assert(0), "");
}

} // namespace
