#include <ctime>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <utility>
#include <vector>

#include "conf/cw_conf.h"
#include "tests/conf/conf_test.h"

namespace
{

constexpr char kReloading[] = "CAPWAP parameter changed, capwap daemon is reloading\n";
constexpr char kChanged[] = "Configuration has been changed, please save or drop it.\n";
constexpr char kUnreadable[] = "cwConfRead: Could not open conf file /cfg/cw.conf.\n";

/// The file with the defaults, which every access point leaves the factory with.
std::string defaultFile()
{
    std::ostringstream text;
    text << std::ifstream(FACTORY_CONF).rdbuf();
    return text.str();
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

// Nobody has seen what is in the file, so the record stays and nothing is written over it.
TEST_F(CwConfTest, AFileThatCannotBeReadCountsForNothing)
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
