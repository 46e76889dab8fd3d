#include <algorithm>
#include <bit>

#include "diag/station_list.h"
#include "diag/vap_list.h"
#include "tests/diag/record.h"

namespace
{

using std::ranges::fill;

const std::string kVapRule = std::string(89, '=') + "\n";

VapRecord plainVap()
{
    VapRecord r{};
    r.radio = 1, r.wlan = 2, set(r.name, "guest"), r.address = 0xc0a80a01, r.netmask = 0xffffff00, r.vlan = 4094;
    set(r.interface, "wlan1-va0"), r.handle = 0x8a10, setMac(r.bssid, 0x0211aabbccff);
    r.keyIndex = 1, r.keyStatus = 3, r.keyLength = 5, set(r.key, "abcde"), setMac(r.transmitCounter, 0x0102030405ff);
    set(r.authentication, "WPA2 RADIUS"), set(r.accountingId, "acct-1"), r.probeThreshold = 20;
    fill(r.portalServer, 'p'), r.reserved785[0] = 'p'; // not terminated
    set(r.authenticationServers[0], "10.1.1.1"), set(r.authenticationServers[2], "radius-three.example.net");
    for (int i = 0; i < 4; ++i)
        set(r.accountingServers[i], "10.2.2." + std::to_string(i + 1));
    return r;
}

const std::string kPlainVap = kVapRule +
                              "Radio Id  1 WLAN Id  2 guest ADMIN_UP(INTF_UP) init_going 192.168.10.1/255.255.255.0\n"
                              "           vlanid=4094, intf=wlan1-va0, vap=0x8a10, bssid=02:11:aa:bb:cc:ff\n"
                              "           mesh backhaul=disabled\n"
                              "           standalone=disabled\n"
                              "           local_switching=disabled, local_bridging=disabled split_tunnel=disabled\n"
                              "           local_auth=disabled\n"
                              "           mac=local, tunnel=local, cap=0000, qos=disabled\n"
                              "           prob_resp_suppress=disabled\n"
                              "           access_control_list=disabled\n"
                              "           auth=WPA2 RADIUS \n";

const std::string kRadius = "           Rad  Acct ID:  acct-1\n"
                            "                 Server:  10.1.1.1           radius-three.example.net \n"
                            "               Acct Svr:  10.2.2.1           10.2.2.2           10.2.2.3           "
                            "10.2.2.4           \n";

std::string vapScreen(std::uint32_t total, const std::string& vaps)
{
    const std::string line = "\nTotal: " + std::to_string(static_cast<int>(total)) + "\n";
    return line + vaps + kVapRule + line;
}

StationRecord plainStation()
{
    StationRecord r{};
    r.number = 7, r.type = 1, r.radio = 1, r.aid = 0xc00a, r.vap = 3, r.vlan = 100, set(r.ssid, "guest");
    setMac(r.bssid, 0x0211aabbccff), setMac(r.mac, 0xf0e1d2c3b4a5);
    return r;
}

const std::string kPlainStation = "===   7 ======================================\n"
                                  "    AID         : c00a\n"
                                  "    MAC         : f0:e1:d2:c3:b4:a5\n"
                                  "    BSSID       : 02:11:aa:bb:cc:ff\n"
                                  "    VAP         : wlan1-va3\n"
                                  "    SSID        : guest\n"
                                  "    Type        : wl----sta\n"
                                  "    VlanID      : 100\n";

std::string stationScreen(std::uint32_t total, const std::string& stations)
{
    return stations + std::string(50, '=') + " \n\nTotal: " + std::to_string(static_cast<int>(total)) + "\n";
}

std::string repeated(const std::string& text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string showVap(const VapRecord& vap)
{
    return screenOf(printVapList, listOf(1, std::vector{vap}));
}

std::string showStation(const StationRecord& station)
{
    return screenOf(printStationList, listOf(1, std::vector{station}));
}

} // namespace

TEST(VapList, ShowsEveryFieldInOrder)
{
    EXPECT_EQ(screenOf(printVapList, listOf(2, std::vector(2, plainVap()))), vapScreen(2, kPlainVap + kPlainVap));

    const std::string modes = "mac=local, tunnel=local, cap=0000";
    Display<VapRecord>{showVap, plainVap(), vapScreen(1, kPlainVap)}.expectVariants({
        {[](auto& r) { r.handle = 0; }, "vap=0x8a10", "vap=(nil)"},
        {[](auto& r) { r.handle = 0xfffffff0; }, "vap=0x8a10", "vap=0xfffffff0"},
        {[](auto& r) { r.radio = 0, r.wlan = 200; }, "Radio Id  1 WLAN Id  2", "Radio Id  0 WLAN Id 200"},
        {[](auto& r) { r.adminDown = 1; }, "ADMIN_UP(INTF_UP)", "ADMIN_DOWN(INTF_UP)"},
        {[](auto& r) { r.interfaceDown = 2, r.initialised = 9; }, "INTF_UP) init_going", "INTF_DOWN) init_done"},
        // A switch is shown as enabled only if its byte is 1.
        {[](auto& r) { r.meshBackhaul = 1, r.qos = 2; }, "backhaul=disabled", "backhaul=enabled"},
        {[](auto& r) { r.meshBackhaul = 255, r.qos = 1, r.accessControlList = 255; }, "qos=disabled", "qos=enabled"},
        {[](auto& r) { r.meshBackhaul = 2, r.accessControlList = 1; }, "list=disabled", "list=enabled"},
        {[](auto& r) { r.probeSuppression = 1, r.probeThreshold = -75; }, "suppress=disabled",
         "suppress=enabled, prob_resp_thresh=-75dBm"},
        {[](auto& r) { r.probeSuppression = 2; }, "suppress=disabled", "suppress=disabled, prob_resp_thresh=20dBm"},
        // Bits without a meaning do not change the display. Nor does the captive-portal bit, because this VAP is not
        // standalone.
        {[](auto& r) { r.flags = 0x195; }, "switching=disabled", "switching=enabled"},
        {[](auto& r) { r.flags = 0x02; }, "bridging=disabled", "bridging=enabled"},
        {[](auto& r) { r.flags = 0x40; }, "tunnel=disabled", "tunnel=enabled"},
        {[](auto& r) { r.flags = 0x08; }, "local_auth=disabled", "local_auth=enabled"},
        {[](auto& r) { r.macMode = 1, r.tunnel = 1, r.flags = 0xf7ff0000; }, modes, "mac=split, tunnel=8023, cap=f7ff"},
        {[](auto& r) { r.macMode = 2, r.tunnel = 2; }, modes, "mac=invalid, tunnel=80211, cap=0000"},
        {[](auto& r) { r.macMode = 255, r.tunnel = 3; }, modes, "mac=invalid, tunnel=invalid, cap=0000"},
        // A text without a terminator ends with its field.
        {[](auto& r) { fill(r.interface, 'i'); }, "wlan1-va0", std::string(16, 'i')},
        {[](auto& r) { fill(r.name, 'n'); }, "guest", std::string(33, 'n')},
        {[](auto& r) { fill(r.authentication, 'a'), r.meshBackhaul = 2; }, "WPA2 RADIUS", std::string(36, 'a')},
    });
}

TEST(VapList, ShowsKeysAndRadiusServersWithPrivacy)
{
    const VapRecord keyed = with(plainVap(), [](auto& r) { r.flags = 0x8000000, r.staticKey = 1; });
    const std::string key = "keyIdx=1, keyLen=5, keyStatus=3, key=abcde\n";
    const std::string wpa = "keyStatus=3, gTsc=0102030405ff\n           key=";
    const std::string screen = changed(vapScreen(1, kPlainVap), "cap=0000", "cap=0800");
    const std::string withKey = changed(screen, "WPA2 RADIUS \n", "WPA2 RADIUS " + key);
    const std::string withRadius = changed(withKey, key, key + kRadius);
    EXPECT_EQ(showVap(keyed), withRadius);
    Display<VapRecord>{showVap, keyed, withKey}.expectVariants({
        {[](auto& r) { r.authentication[5] = 'r'; }, "RADIUS", "rADIUS"},
        // The last letter of "RADIUS" lies outside the field, so the word is not found.
        {[](auto& r) { set(r.authentication, std::string(31, 'a') + "RADIU"), r.meshBackhaul = 'S'; }, "WPA2 RADIUS",
         std::string(31, 'a') + "RADIU"},
    });
    Display<VapRecord>{showVap, keyed, withRadius}.expectVariants({
        {[](auto& r) { r.authenticationServers[0][0] = '\0'; }, "10.1.1.1           ", ""},
        {[](auto& r) { r.accountingServers[2][0] = '\0'; }, "10.2.2.3           ", ""},
        {[](auto& r) { fill(r.accountingId, 'c'); }, "acct-1", std::string(64, 'c')},
        {[](auto& r) { std::memset(r.accountingServers, 'x', sizeof r.accountingServers); },
         "10.2.2.1           10.2.2.2           10.2.2.3           10.2.2.4           ",
         repeated(std::string(64, 'x') + " ", 4)},
        {[](auto& r) { r.staticKey = 255, fill(r.key, 'k'), r.keyLength = 65535; }, key,
         "keyIdx=1, keyLen=65535, keyStatus=3, key=" + std::string(64, 'k') + "\n"},
        {[](auto& r) { r.staticKey = 0; }, key, "WPA keyIdx=1, keyLen=5, " + wpa + "61626364 65\n"},
        {[](auto& r) { r.staticKey = 0, r.keyLength = 0; }, key, "WPA keyIdx=1, keyLen=0, " + wpa + "\n"},
        {[](auto& r) { r.staticKey = 0, r.keyLength = 65535, fill(r.key, '\x0f'); }, key,
         "WPA keyIdx=1, keyLen=65535, " + wpa + "0f0f0f0f" + repeated(" 0f0f0f0f", 15) + "\n"},
    });
}

TEST(VapList, ShowsAStandaloneVapAsFat)
{
    const std::string standalone = changed(kPlainVap, "standalone=disabled", "standalone=enabled");
    const std::string fat = changed(standalone, "mac=local", "mac=fat");
    const std::string portal = "           cpauth enabled with WebAuthSvr=" + std::string(64, 'p') + "\n";
    EXPECT_EQ(showVap(with(plainVap(), [](auto& r) { r.flags = 0x20, r.macMode = 1, r.tunnel = 7; })),
              vapScreen(1, fat));
    EXPECT_EQ(showVap(with(plainVap(), [](auto& r) { r.flags = 0x120; })), vapScreen(1, fat + portal));
}

TEST(StationList, ShowsEveryFieldInOrder)
{
    EXPECT_EQ(showStation(plainStation()), stationScreen(1, kPlainStation));
    Display<StationRecord>{showStation, plainStation(), stationScreen(1, kPlainStation)}.expectVariants({
        {[](auto& r) { r.number = 255; }, "===   7 =", "=== 255 ="},
        {[](auto& r) { r.type = 2; }, "wl----sta", "wl--m-sta"},
        {[](auto& r) { r.type = 3; }, "wl----sta", "wl-m-host"},
        {[](auto& r) { r.type = 0; }, "wl----sta", "invalid  "},
        {[](auto& r) { r.type = 4, r.vlan = 65535; }, "wl----sta\n    VlanID      : 100",
         "invalid  \n    VlanID      : 65535"},
        {[](auto& r) { r.aid = 0; }, ": c00a\n", ": 0\n"},
        {[](auto& r) { r.radio = 255, r.vap = 0; }, "wlan1-va3", "wlan255-va0"},
        {[](auto& r) { set(r.ssid, "g\x1b[2J\n"); }, "guest", "g?[2J?"},
        {[](auto& r) { fill(r.ssid, 's'), fill(r.reserved123, 's'); }, "guest", std::string(33, 's')},
    });
}

TEST(ReplyList, EndsAtTheCountOrWithTheReply)
{
    // The count is printed as it was sent. Nothing is listed if its low byte is 128 or more; on a big-endian host, if
    // its high byte is.
    constexpr std::uint32_t kListsNothing = std::endian::native == std::endian::little ? 0x80 : 0x80000000;
    const struct {
        std::uint32_t count;
        std::size_t sent;
    } kCases[] = {{0, 2},          {1, 2},     {3, 2},     {8, 8},     {127, 8},
                  {128, 8},        {255, 8},   {256, 8},   {384, 8},   {0x7fffff7f, 2},
                  {0x80000001, 2}, {383, 383}, {511, 511}, {512, 511}, {0xffffffff, 2}};
    for (const auto& test : kCases) {
        const std::size_t shown = (test.count & kListsNothing) != 0 ? 0 : std::min<std::size_t>(test.count, test.sent);
        EXPECT_EQ(screenOf(printStationList, listOf(test.count, std::vector(test.sent, plainStation()))),
                  stationScreen(test.count, repeated(kPlainStation, shown)));
        if (test.sent <= 8) {
            EXPECT_EQ(screenOf(printVapList, listOf(test.count, std::vector(test.sent, plainVap()))),
                      vapScreen(test.count, repeated(kPlainVap, shown)));
        }
    }

    // The bytes that are missing from the last record read as zero.
    auto reply = listOf(5, std::vector{plainStation()});
    reply.resize(4 + offsetof(StationRecord, aid));
    const std::string cut = showStation(with(StationRecord{}, [](auto& r) { r.number = 7, r.type = 1, r.radio = 1; }));
    EXPECT_EQ(screenOf(printStationList, reply), changed(cut, "Total: 1", "Total: 5"));
    constexpr std::uint8_t kHead[] = {0, 0, 2, 1};
    for (const auto& [length, total] : {std::pair{0U, 0U}, {3U, 512U}, {4U, 513U}}) {
        EXPECT_EQ(screenOf(printStationList, std::span(kHead).first(length)), stationScreen(total, ""));
        EXPECT_EQ(screenOf(printVapList, std::span(kHead).first(length)), vapScreen(total, ""));
    }
}
