#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "diag/ap_info.h"
#include "diag/radio_info.h"
#include "diag/station_list.h"
#include "diag/vap_list.h"
#include "tests/diag/record.h"

namespace
{

const std::string kVapRule = std::string(89, '=') + "\n";
const std::string kStationRule = std::string(50, '=') + " \n";

Record plainVap()
{
    Record vap(sizeof(VapRecord));
    vap.u32(4, 0x8a10).u8(8, 1).text(9, "wlan1-va0").mac(25, 0x0211aabbccff).u32(32, 0xc0a80a01);
    vap.u32(36, 0xffffff00).u8(40, 2).u8(48, 1).u8(49, 3).u16(50, 5).text(52, "abcde").mac(116, 0x0102030405ff);
    vap.text(125, "guest").text(158, "WPA2 RADIUS").u16(198, 4094);
    vap.text(209, "acct-1").text(273, "10.1.1.1").text(401, "radius-three.example.net");
    vap.text(465, "10.2.2.1").text(529, "10.2.2.2").text(593, "10.2.2.3").text(657, "10.2.2.4");
    vap.text(721, "portal.example.net");
    return vap;
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

std::string vapScreen(int total, const std::string& vaps)
{
    const std::string line = "\nTotal: " + std::to_string(total) + "\n";
    return line + vaps + kVapRule + line;
}

Record plainStation()
{
    Record station(sizeof(StationRecord));
    station.u8(0, 7).u8(1, 1).u8(14, 1).u16(16, 0xc00a).u8(18, 3).mac(20, 0x0211aabbccff).mac(26, 0xf0e1d2c3b4a5);
    station.u16(38, 100).text(90, "guest");
    return station;
}

const std::string kPlainStation = "===   7 ======================================\n"
                                  "    AID         : c00a\n"
                                  "    MAC         : f0:e1:d2:c3:b4:a5\n"
                                  "    BSSID       : 02:11:aa:bb:cc:ff\n"
                                  "    VAP         : wlan1-va3\n"
                                  "    SSID        : guest\n"
                                  "    Type        : wl----sta\n"
                                  "    VlanID      : 100\n";

std::string stationScreen(int total, const std::string& stations)
{
    return stations + kStationRule + "\nTotal: " + std::to_string(total) + "\n";
}

std::string repeated(const std::string& text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string showVap(const Record& vap)
{
    return screenOf(printVapList, listOf(1, {vap}));
}

std::string showStation(const Record& station)
{
    return screenOf(printStationList, listOf(1, {station}));
}

} // namespace

TEST(VapList, ShowsEveryFieldInOrder)
{
    EXPECT_EQ(screenOf(printVapList, listOf(2, {plainVap(), plainVap()})), vapScreen(2, kPlainVap + kPlainVap));

    const std::string modes = "mac=local, tunnel=local, cap=0000";
    Display{showVap, plainVap(), vapScreen(1, kPlainVap)}.expectVariants({
        {[](Record& r) { r.u32(4, 0); }, "vap=0x8a10", "vap=(nil)"},
        {[](Record& r) { r.u32(4, 0xfffffff0); }, "vap=0x8a10", "vap=0xfffffff0"},
        {[](Record& r) { r.u8(8, 0).u8(40, 200); }, "Radio Id  1 WLAN Id  2", "Radio Id  0 WLAN Id 200"},
        {[](Record& r) { r.u8(196, 1); }, "ADMIN_UP(INTF_UP)", "ADMIN_DOWN(INTF_UP)"},
        {[](Record& r) { r.u8(197, 2).u8(195, 9); }, "INTF_UP) init_going", "INTF_DOWN) init_done"},
        // A switch is on at 1 only.
        {[](Record& r) { r.u8(194, 1).u8(123, 2).u8(122, 255); }, "backhaul=disabled", "backhaul=enabled"},
        {[](Record& r) { r.u8(194, 255).u8(123, 1); }, "qos=disabled", "qos=enabled"},
        {[](Record& r) { r.u8(194, 2).u8(122, 1); }, "list=disabled", "list=enabled"},
        {[](Record& r) { r.u8(200, 1).u8(201, 0xb5); }, "suppress=disabled",
         "suppress=enabled, prob_resp_thresh=-75dBm"},
        {[](Record& r) { r.u8(200, 2).u8(201, 20); }, "suppress=disabled", "suppress=disabled, prob_resp_thresh=20dBm"},
        // Bits without a meaning, and the captive portal, which asks for a standalone VAP, change nothing.
        {[](Record& r) { r.u32(44, 0x195); }, "switching=disabled", "switching=enabled"},
        {[](Record& r) { r.u32(44, 0x02); }, "bridging=disabled", "bridging=enabled"},
        {[](Record& r) { r.u32(44, 0x40); }, "tunnel=disabled", "tunnel=enabled"},
        {[](Record& r) { r.u32(44, 0x08); }, "local_auth=disabled", "local_auth=enabled"},
        {[](Record& r) { r.u8(42, 1).u8(43, 1).u16(46, 0xf7ff); }, modes, "mac=split, tunnel=8023, cap=f7ff"},
        {[](Record& r) { r.u8(42, 2).u8(43, 2); }, modes, "mac=invalid, tunnel=80211, cap=0000"},
        {[](Record& r) { r.u8(42, 255).u8(43, 3); }, modes, "mac=invalid, tunnel=invalid, cap=0000"},
        // A text without a terminator ends with its field.
        {[](Record& r) { r.text(9, std::string(16, 'i')); }, "wlan1-va0", std::string(16, 'i')},
        {[](Record& r) { r.text(125, std::string(33, 'n')); }, "guest", std::string(33, 'n')},
        {[](Record& r) { r.text(158, std::string(36, 'a')).u8(194, 2); }, "WPA2 RADIUS", std::string(36, 'a')},
    });
}

TEST(VapList, ShowsKeysAndRadiusServersWithPrivacy)
{
    const Record keyed = plainVap().u16(46, 0x800).u8(124, 1);
    const std::string key = "keyIdx=1, keyLen=5, keyStatus=3, key=abcde\n";
    const std::string wpa = "keyStatus=3, gTsc=0102030405ff\n           key=";
    const std::string screen = changed(vapScreen(1, kPlainVap), "cap=0000", "cap=0800");
    const std::string withKey = changed(screen, "WPA2 RADIUS \n", "WPA2 RADIUS " + key);
    const std::string withRadius = changed(withKey, key, key + kRadius);
    EXPECT_EQ(showVap(keyed), withRadius);
    Display{showVap, keyed, withKey}.expectVariants({
        {[](Record& r) { r.u8(163, 'r'); }, "RADIUS", "rADIUS"},
        // The word ends behind the field.
        {[](Record& r) { r.text(158, std::string(31, 'a') + "RADIU").u8(194, 'S'); }, "WPA2 RADIUS",
         std::string(31, 'a') + "RADIU"},
    });
    Display{showVap, keyed, withRadius}.expectVariants({
        {[](Record& r) { r.u8(273, 0); }, "10.1.1.1           ", ""},
        {[](Record& r) { r.u8(593, 0); }, "10.2.2.3           ", ""},
        {[](Record& r) { r.text(209, std::string(64, 'c')); }, "acct-1", std::string(64, 'c')},
        {[](Record& r) { r.text(465, std::string(256, 'x')); },
         "10.2.2.1           10.2.2.2           10.2.2.3           10.2.2.4           ",
         repeated(std::string(64, 'x') + " ", 4)},
        {[](Record& r) { r.u8(124, 255).text(52, std::string(64, 'k')).u16(50, 65535); }, key,
         "keyIdx=1, keyLen=65535, keyStatus=3, key=" + std::string(64, 'k') + "\n"},
        {[](Record& r) { r.u8(124, 0); }, key, "WPA keyIdx=1, keyLen=5, " + wpa + "61626364 65\n"},
        {[](Record& r) { r.u8(124, 0).u16(50, 0); }, key, "WPA keyIdx=1, keyLen=0, " + wpa + "\n"},
        {[](Record& r) { r.u8(124, 0).u16(50, 65535).text(52, std::string(64, '\x0f')); }, key,
         "WPA keyIdx=1, keyLen=65535, " + wpa + "0f0f0f0f" + repeated(" 0f0f0f0f", 15) + "\n"},
    });
}

TEST(VapList, ShowsAStandaloneVapAsFat)
{
    const std::string standalone = changed(kPlainVap, "standalone=disabled", "standalone=enabled");
    const std::string fat = changed(standalone, "mac=local", "mac=fat");
    const std::string portal = "           cpauth enabled with WebAuthSvr=" + std::string(64, 'p') + "\n";
    EXPECT_EQ(showVap(plainVap().u32(44, 0x20).u8(42, 1).u8(43, 7)), vapScreen(1, fat));
    EXPECT_EQ(showVap(plainVap().u32(44, 0x120).text(721, std::string(65, 'p'))), vapScreen(1, fat + portal));
}

TEST(StationList, ShowsEveryFieldInOrder)
{
    EXPECT_EQ(showStation(plainStation()), stationScreen(1, kPlainStation));
    Display{showStation, plainStation(), stationScreen(1, kPlainStation)}.expectVariants({
        {[](Record& r) { r.u8(0, 255); }, "===   7 =", "=== 255 ="},
        {[](Record& r) { r.u8(1, 2); }, "wl----sta", "wl--m-sta"},
        {[](Record& r) { r.u8(1, 3); }, "wl----sta", "wl-m-host"},
        {[](Record& r) { r.u8(1, 0); }, "wl----sta", "invalid  "},
        {[](Record& r) { r.u8(1, 4).u16(38, 65535); }, "wl----sta\n    VlanID      : 100",
         "invalid  \n    VlanID      : 65535"},
        {[](Record& r) { r.u16(16, 0); }, ": c00a\n", ": 0\n"},
        {[](Record& r) { r.u8(14, 255).u8(18, 0); }, "wlan1-va3", "wlan255-va0"},
        {[](Record& r) { r.text(90, std::string(38, 's')); }, "guest", std::string(33, 's')},
    });
}

TEST(ReplyList, EndsAtTheCountOrWithTheReply)
{
    // A count is shown as sent; one whose low byte is 128 or more lists nothing.
    const struct {
        std::uint32_t count;
        std::size_t sent;
        std::size_t shown;
    } kCases[] = {
        {0, 2, 0},          {1, 2, 1},       {3, 2, 2},     {8, 8, 8},       {127, 8, 8},
        {128, 8, 0},        {255, 8, 0},     {256, 8, 8},   {384, 8, 0},     {0x7fffff7f, 2, 2},
        {0x80000001, 2, 2}, {383, 383, 383}, {511, 511, 0}, {512, 511, 511}, {0xffffffff, 2, 0},
    };
    for (const auto& test : kCases) {
        const int total = static_cast<int>(test.count);
        EXPECT_EQ(screenOf(printStationList, listOf(test.count, std::vector(test.sent, plainStation()))),
                  stationScreen(total, repeated(kPlainStation, test.shown)));
        if (test.sent <= 8) {
            EXPECT_EQ(screenOf(printVapList, listOf(test.count, std::vector(test.sent, plainVap()))),
                      vapScreen(total, repeated(kPlainVap, test.shown)));
        }
    }

    // A record that was not received whole is zero from there on.
    auto reply = listOf(5, {plainStation()});
    reply.resize(4 + 16);
    const std::string cut = showStation(Record(sizeof(StationRecord)).u8(0, 7).u8(1, 1).u8(14, 1));
    EXPECT_EQ(screenOf(printStationList, reply), changed(cut, "Total: 1", "Total: 5"));
    constexpr std::uint8_t kHead[] = {0, 0, 2, 1};
    for (const auto& [length, total] : {std::pair{0U, 0}, {3U, 512}, {4U, 513}}) {
        EXPECT_EQ(screenOf(printStationList, std::span(kHead).first(length)), stationScreen(total, ""));
        EXPECT_EQ(screenOf(printVapList, std::span(kHead).first(length)), vapScreen(total, ""));
    }
}

/// Whatever the daemon sends: the printers end, and read nothing but the reply.
TEST(RandomReply, IsShownWithoutHarm)
{
    // One in so many replies is random throughout; the others are zero but for some bytes. A random channel range has
    // 32768 channels.
    const std::pair<ShowReply, std::uint32_t> kPrinters[] = {
        {printApInfo, 2}, {printVapList, 2}, {printStationList, 2}, {printRadioInfo, 2000}};
    const auto showRandomReplies = [&] {
        std::mt19937 random(5);
        for (const auto& [show, denseShare] : kPrinters)
            for (int i = 0; i < 100000; ++i) {
                // Mostly a record or two, now and then as long as can be.
                std::vector<std::uint8_t> reply(random() % (i % 500 == 0 ? 65537 : 4200));
                if (random() % denseShare == 0)
                    std::ranges::generate(reply, [&] { return static_cast<std::uint8_t>(random()); });
                else if (!reply.empty())
                    for (auto pokes = random() % 64; pokes > 0; --pokes)
                        reply[random() % std::min<std::size_t>(reply.size(), random() % 2 == 0 ? 800 : reply.size())] =
                            static_cast<std::uint8_t>(random());
                showReply(show, reply);
            }
    };
    EXPECT_EXIT((std::freopen("/dev/null", "w", stdout), showRandomReplies(), std::exit(0)), testing::ExitedWithCode(0),
                "");
}
