#include "diag/ap_info.h"

#include "tests/diag/record.h"

namespace
{

using std::ranges::fill;

ApInfo plainInfo()
{
    ApInfo r{};
    set(r.name, "AP-Lobby"), set(r.location, "Hall 3, west"), r.radioCount = 2, r.apMode = 1, r.managementVlan = 4094;
    r.echoInterval = 30, r.discoveryInterval = 5, r.reportInterval = 31, r.idleTimeout = 300;
    r.statisticsInterval = 120, r.stationStatisticsInterval = 11, r.vapStatisticsInterval = 15;
    r.radioStatisticsInterval = 16, r.stationCapabilityInterval = 65535, set(r.state, "RUN"), r.retryCount = -1;
    r.imageReceived = 0xfffffffe, r.imageTotal = 0xffffffff, r.apAddress = 0xc0a80163, r.acAddress = 0x0a0000fe;
    r.acPorts[0] = 5246, r.acPorts[1] = 5247, set(r.retryReason, "echo timeout"), r.connectTime = 0xffffffff;
    setMac(r.baseMac, 0x4211aabbccff), r.bulkSequence = INT32_MIN, r.uplinkMtu = 1400, r.downlinkMtu = 1500;
    r.dataSecurity = 2, set(r.dtlsCipher, "AES256-SHA");
    return r;
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

std::string showAp(const ApInfo& info)
{
    return screenOf(printApInfo, bytesOf(std::vector{info}));
}

} // namespace

TEST(ApInfo, ShowsEveryFieldInOrder)
{
    EXPECT_EQ(showAp(plainInfo()), kPlainScreen);

    const ApInfo loading = with(plainInfo(), [](auto& r) { r.downloading = 255; });
    const std::string progress = ": RUN + Image Downloading 4294967294/4294967295";
    Display<ApInfo>{showAp, loading, changed(kPlainScreen, ": RUN", progress)}.expectVariants({
        {[](auto& r) { fill(r.location, 'l'); }, "Hall 3, west", std::string(36, 'l')},
        {[](auto& r) { fill(r.state, 's'); }, "RUN", std::string(36, 's')},
    });

    const std::string dtls = "dtls-enabled\n    dtls-in-kernel       : ";
    const std::string cipher = "\n    cipher               : ";
    const std::string mtu = " (ul_mtu=1400 dl_mtu=1500)\n";
    Display<ApInfo>{showAp, plainInfo(), kPlainScreen}.expectVariants({
        {[](auto& r) { r.apMode = 0; }, "fat AP", "thin AP"},
        {[](auto& r) { r.apMode = 2; }, "fat AP", "site survey"},
        {[](auto& r) { r.apMode = 3; }, "fat AP", "thin AP"},
        {[](auto& r) { r.connectTime = 0; }, "Sun Feb  7 06:28:15 2106\n", "Thu Jan  1 00:00:00 1970\n"},
        {[](auto& r) { r.dataSecurity = 1; }, "clear-text", "dtls-enabled"},
        {[](auto& r) { r.dataSecurity = 4; }, "clear-text", dtls + "disabled" + cipher + "AES256-SHA"},
        {[](auto& r) { r.fragmentPrevention = 1; }, "disabled\n    LAN", "TCP_MSS " + mtu + "    LAN"},
        {[](auto& r) { r.fragmentPrevention = 2; }, "disabled\n    LAN", " TUN_MTU" + mtu + "    LAN"},
        {[](auto& r) { r.fragmentPrevention = 3; }, "disabled\n    LAN", "TCP_MSS TUN_MTU" + mtu + "    LAN"},
        {[](auto& r) { r.fragmentPrevention = 4; }, "disabled\n    LAN", " " + mtu + "    LAN"},
        // A text without a terminator ends with its field.
        {[](auto& r) { fill(r.name, 'n'); }, "AP-Lobby", std::string(36, 'n')},
        {[](auto& r) { fill(r.retryReason, 'r'); }, "echo timeout", std::string(64, 'r')},
        {[](auto& r) { fill(r.state, 's'); }, "RUN", std::string(36, 's')},
        {[](auto& r) { r.dataSecurity = 6, r.dtlsInKernel = 1, fill(r.dtlsCipher, 'c'); }, "clear-text",
         dtls + "enabled" + cipher + std::string(36, 'c')},
    });
}

TEST(ApInfo, ShowsLanPortsByMode)
{
    ApInfo info = plainInfo();
    auto& port = info.lanPorts;
    info.lanPortCount = 7, port[1].mode = 1, port[1].flags = 0x40, port[2].mode = 2, port[3].mode = 4;
    port[4].mode = 3, port[4].secondNumber = 200, port[4].flags = 0x33, port[4].vlanTag = 0xbc;
    set(port[4].ssid, "guest"), setMac(port[4].addresses.mac, 0x02fe00000a07), port[4].splitTunnelSecond = 0x01020304;
    port[5].mode = 3, port[5].flags = 0x8c, port[5].reserved3 = 0xff, port[5].vlanTag = 0xffff;
    fill(port[5].ssid, 'S'), fill(port[5].addresses.mac, 0xff), port[6].mode = 3, port[6].flags = 0xff;
    // The MAC address and the first split-tunnel address overlap in one byte: the last byte of the MAC address is the
    // first byte in memory of the split-tunnel address.
    setMac(port[6].addresses.mac, 0xa1a2a3a4a500), port[6].addresses.splitTunnel.first = 0xfd0b0cfd;
    port[6].splitTunnelSecond = 0xffffff00;

    EXPECT_EQ(showAp(info),
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
                      "                              253.11.12.253 255.255.255.0\n"));
}

TEST(ApInfo, EndsLanPortsAtTheCountOrWithTheReply)
{
    constexpr std::size_t kPorts = ApInfo::kLanPortOffset;
    constexpr std::size_t kWhole = ApInfo::kReplyLength;
    const struct {
        std::int32_t count;
        std::size_t length;
        int shown;
    } kCases[] = {{2, kWhole, 2},    {-1, kWhole, 0},       {INT32_MAX, kWhole, 51},
                  {1000, kPorts, 0}, {1000, kPorts + 1, 1}, {1000, kPorts + sizeof(LanPort), 1}};
    for (const auto& test : kCases) {
        std::string expected = "    LAN port cnt         : " + std::to_string(test.count) + "\n";
        for (int i = 1; i <= test.shown; ++i)
            expected += "            port" + std::to_string(i) + "-cfg    : offline   (0) \n";
        auto reply = bytesOf(std::vector{with(ApInfo{}, [&](auto& r) { r.lanPortCount = test.count; })});
        reply.resize(test.length);
        EXPECT_TRUE(screenOf(printApInfo, reply).ends_with(expected));
    }
    // Bytes that were not received read as zero.
    const auto named = bytesOf(std::vector{with(ApInfo{}, [](auto& r) { set(r.name, "AP"); })});
    const std::string cut = screenOf(printApInfo, std::span(named).first(offsetof(ApInfo, name) + 2));
    EXPECT_EQ(cut, screenOf(printApInfo, named));
    EXPECT_TRUE(cut.starts_with("WTP Configuration\n    name                 : AP\n    loc                  : \n"
                                "    ap mode              : thin AP\n    radio cnt            : 0\n"));
    EXPECT_EQ(screenOf(printApInfo, {}), changed(cut, ": AP\n", ": \n"));
}
