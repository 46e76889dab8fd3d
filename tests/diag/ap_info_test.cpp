#include "diag/ap_info.h"

#include "tests/diag/record.h"

namespace
{

constexpr std::size_t kCapacity = ApInfo::kReplyLength;

Record plainRecord()
{
    Record record(kCapacity);
    record.u8(4, 2).u16(6, 30).u16(8, 5).u16(10, 31).u16(12, 300).u16(14, 120).u16(16, 11).u16(18, 15).u16(20, 16);
    record.u16(22, 65535).u16(24, 4094).text(26, "AP-Lobby").text(62, "Hall 3, west").text(180, "RUN");
    record.u32(100, 100).u32(104, 4000).u32(108, 0xffffffff).u32(112, 0xffffffff).text(116, "echo timeout");
    record.u32(216, 0xc0a80163).u32(220, 0x0a0000fe).u16(288, 5246).u16(290, 5247).u32(292, 0x80000000).u8(296, 2);
    record.u8(297, 1).text(298, "AES256-SHA").mac(334, 0x4211aabbccff).u8(764, 1).u16(768, 1400).u16(770, 1500);
    return record;
}

const std::string kPlainScreen = "WTP Configuration\n"
                                 "    name                 : AP-Lobby\n"
                                 "    loc                  : Hall 3, west\n"
                                 "    ap mode              : fat AP\n"
                                 "    radio cnt            : 2\n"
                                 "    echo-interval        : 30\n"
                                 "    discovery-interval   : 5\n"
                                 "    report-interval      : 31\n"
                                 "    idle-timeout         : 300\n"
                                 "    statistics-interval  : 120\n"
                                 "    sta-stats-interval   : 11\n"
                                 "    vap-stats-interval   : 15\n"
                                 "    radio-stats-interval : 16\n"
                                 "    sta-cap-interval     : 65535\n"
                                 "    fsm-state            : RUN\n"
                                 "    wtp-ip-addr          : 192.168.1.99\n"
                                 "    ac-ip-addr           : 10.0.0.254:5246,5247\n"
                                 "    retry count          : -1\n"
                                 "    retry reason         : echo timeout\n"
                                 "    connect time         : Sun Feb  7 06:28:15 2106\n"
                                 "\n"
                                 "    base-mac             : 42:11:aa:bb:cc:ff\n"
                                 "    bulk data seq num    : -2147483648\n"
                                 "    ap-mgmt-vlanid       : 4094\n"
                                 "    data-channel-security: clear-text\n"
                                 "    ip-frag-prevent      : disabled\n"
                                 "    LAN port cnt         : 0\n";

std::string showAp(const Record& record)
{
    return screenOf(printApInfo, record.bytes());
}

} // namespace

TEST(ApInfo, ShowsEveryFieldInOrder)
{
    EXPECT_EQ(showAp(plainRecord()), kPlainScreen);

    const Record loading = plainRecord().u8(98, 255).u32(100, 0xfffffffe).u32(104, 0xffffffff);
    const std::string progress = ": RUN + Image Downloading 4294967294/4294967295";
    Display{showAp, loading, changed(kPlainScreen, ": RUN", progress)}.expectVariants({
        {[](Record& r) { r.text(62, std::string(36, 'l')); }, "Hall 3, west", std::string(36, 'l')},
        {[](Record& r) { r.text(180, std::string(36, 's')); }, "RUN", std::string(36, 's')},
    });

    const std::string dtls = "dtls-enabled\n    dtls-in-kernel       : ";
    const std::string cipher = "\n    cipher               : ";
    const std::string mtu = " (ul_mtu=1400 dl_mtu=1500)\n";
    Display{showAp, plainRecord(), kPlainScreen}.expectVariants({
        {[](Record& r) { r.u8(764, 0); }, "fat AP", "thin AP"},
        {[](Record& r) { r.u8(764, 2); }, "fat AP", "site survey"},
        {[](Record& r) { r.u8(764, 3); }, "fat AP", "thin AP"},
        {[](Record& r) { r.u32(112, 0); }, "Sun Feb  7 06:28:15 2106\n", "Thu Jan  1 00:00:00 1970\n"},
        {[](Record& r) { r.u8(296, 1); }, "clear-text", "dtls-enabled"},
        {[](Record& r) { r.u8(296, 4).u8(297, 0); }, "clear-text", dtls + "disabled" + cipher + "AES256-SHA"},
        {[](Record& r) { r.u8(766, 1); }, "disabled\n    LAN", "TCP_MSS " + mtu + "    LAN"},
        {[](Record& r) { r.u8(766, 2); }, "disabled\n    LAN", " TUN_MTU" + mtu + "    LAN"},
        {[](Record& r) { r.u8(766, 3); }, "disabled\n    LAN", "TCP_MSS TUN_MTU" + mtu + "    LAN"},
        {[](Record& r) { r.u8(766, 4); }, "disabled\n    LAN", " " + mtu + "    LAN"},
        // A text without a terminator ends with its field.
        {[](Record& r) { r.text(26, std::string(36, 'n')); }, "AP-Lobby", std::string(36, 'n')},
        {[](Record& r) { r.text(116, std::string(64, 'r')); }, "echo timeout", std::string(64, 'r')},
        {[](Record& r) { r.text(180, std::string(36, 's')); }, "RUN", std::string(36, 's')},
        {[](Record& r) { r.u8(296, 6).text(298, std::string(36, 'c')); }, "clear-text",
         dtls + "enabled" + cipher + std::string(36, 'c')},
    });
}

TEST(ApInfo, ShowsLanPortsByMode)
{
    // A port takes 52 bytes.
    Record record = plainRecord().u32(344, 7).u8(348, 0).u8(400, 1).u8(402, 0x40).u8(452, 2).u8(504, 4);
    record.u8(556, 3).u8(557, 200).u8(558, 0x33).u16(560, 0xbc).text(562, "guest").mac(595, 0x02fe00000a07);
    record.u32(604, 0x01020304);
    record.u8(608, 3).u8(610, 0x8c).u8(611, 0xff).u16(612, 0xffff).text(614, std::string(33, 'S'));
    record.mac(647, 0xffffffffffff);
    // The first address begins with the last byte of the MAC address.
    record.u8(660, 3).u8(662, 0xff).mac(699, 0xa1a2a3a4a500).u32(704, 0x0a0b0cfd).u32(708, 0xffffff00);

    EXPECT_EQ(showAp(record),
              changed(kPlainScreen, "LAN port cnt         : 0\n",
                      "LAN port cnt         : 7\n"
                      "            port1-cfg    : offline   (0) \n"
                      "            port2-cfg    : NAT-TO-WAN(1) \n"
                      "            port3-cfg    : BR--TO-WAN(2) \n"
                      "            port4-cfg    : \?\?\?\?\?\?\?\?\?\?(4) \n"
                      "            port5-cfg    : BR-TO-SSID(3) 200 02:fe:00:00:0a:07 ssid=guest            "
                      "vlan_tag=00bc st lsw lbr mesh \n"
                      "            port6-cfg    : BR-TO-SSID(3) 0 ff:ff:ff:ff:ff:ff "
                      "ssid=SSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSS vlan_tag=ffff \n"
                      "            port7-cfg    : BR-TO-SSID(3) 0 a1:a2:a3:a4:a5:fd ssid=                 "
                      "vlan_tag=0000 st lsw lbr split mesh \n"
                      "                              10.11.12.253 255.255.255.0\n"));
}

TEST(ApInfo, EndsLanPortsAtTheCountOrWithTheReply)
{
    const struct {
        std::uint32_t count;
        std::size_t length;
        int shown;
    } kCases[] = {
        {2, kCapacity, 2}, {0xffffffff, kCapacity, 0}, {0x7fffffff, kCapacity, 51}, {1000, 348, 0}, {1000, 349, 1},
        {1000, 400, 1},
    };
    for (const auto& test : kCases) {
        std::string expected = "    LAN port cnt         : " + std::to_string(static_cast<int>(test.count)) + "\n";
        for (int i = 1; i <= test.shown; ++i)
            expected += "            port" + std::to_string(i) + "-cfg    : offline   (0) \n";
        const Record record = Record(kCapacity).u32(344, test.count);
        EXPECT_TRUE(screenOf(printApInfo, std::span(record.bytes()).first(test.length)).ends_with(expected));
    }
    // What was not received is zero.
    const std::string cut = showAp(Record(28).text(26, "AP"));
    EXPECT_EQ(cut, showAp(Record(kCapacity).text(26, "AP")));
    EXPECT_TRUE(cut.starts_with("WTP Configuration\n    name                 : AP\n    loc                  : \n"
                                "    ap mode              : thin AP\n    radio cnt            : 0\n"));
    EXPECT_EQ(screenOf(printApInfo, {}), changed(cut, ": AP\n", ": \n"));
}
