#include "conf/cw_items.h"

#include <bit>
#include <cstddef>
#include <span>
#include <sstream>
#include <utility>
#include <vector>

#include "base/text.h"
#include "conf/cw_show.h"
#include "tests/conf/conf.h"

namespace
{

/// The value of an item of the record, written as in the file. Each value of a list is followed by a blank.
std::string valueOf(const char* key)
{
    std::string text;
    const CwItem& item = *cwConfItem(key);
    forEachValue(item, cwConfig, [&](const char*, const char* value) {
        text += value;
        text += isCwList(item) ? " " : "";
    });
    return text;
}

TEST_F(ConfTest, RadioSettingsHaveTheLayoutOfTheDaemonsRecord)
{
    if constexpr (std::endian::native == std::endian::little) {
        CwConfig config;
        cwConfDefault(config, kShellInstance);
        char digits[2 * sizeof config.radio + 1] = "";
        char* end = digits;
        for (const std::byte byte : std::as_bytes(std::span(&config.radio, 1)))
            end = putHex(end, static_cast<std::uint8_t>(byte));
        EXPECT_STREQ(digits, "0400000005000000110000000101010104000000000000016400"
                             "4e41ff004e41ff004e41ff000000"
                             "2a0900002a09000007000000040000000002000000020000"
                             "0400000007000000000000000000000078000000fa0000003c0000000f000000"
                             "0103020202020202020202000000000000000000");
    }
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

// Some items are neither in the file nor in the command tree. Only this display shows their defaults.
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
        std::string said;                                        ///< the message; a percent sign stands for the value
        std::vector<std::pair<std::string, std::string>> values; ///< a value and what the record then holds
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
        {"discovery-type", "", {{"static", "1"}, {"dhcp", "2"}, {"broadcast", "5"}, {"multicast", "6"}, {"3", "3"}}},
        {"discovery-type", "", {{"1", "1"}, {"auto", "0"}, {"dns", "3"}, {"6", "6"}, {"quillsky", "7"}}},
        {"discovery-type", refused, {{"4", "7"}, {"Static", "7"}, {"07", "7"}}},
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
    EXPECT_STREQ(sysConfig.staticAddr, "192.168.1.2") << "a record changes no other";
    EXPECT_STREQ(cwConfigSnapshot.hwVer, "QWX40R") << "the snapshot keeps the text it was taken with";
    EXPECT_EQ(set("Echo-interval", "5"), unknown + "Echo-interval'\n");
}

TEST(CwAssertDeathTest, DiesOnlyOfZero)
{
    cw_assert(-1);
    EXPECT_DEATH(cw_assert(0), "");
}

} // namespace
