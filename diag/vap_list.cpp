#include "diag/vap_list.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

#include "base/address.h"
#include "base/text.h"
#include "diag/reply.h"
#include "diag/value_names.h"
#include "platform/daemon_records.h"
#include "shell/output.h"

namespace
{

constexpr const char* kRule =
    "=========================================================================================\n";
constexpr const char* kMacModes[] = {"local", "split"};
constexpr const char* kTunnels[] = {"local", "8023", "80211"};

/// The state of a switch, which is on only if its value is 1.
const char* switchWord(std::uint8_t value)
{
    return enabledWord(value == 1);
}

void printKey(const VapRecord& vap)
{
    if (vap.staticKey != 0) {
        cli_printf("keyIdx=%d, keyLen=%d, keyStatus=%d, key=%.64s\n", vap.keyIndex, vap.keyLength, vap.keyStatus,
                   reinterpret_cast<const char*>(vap.key));
        return;
    }
    const std::uint8_t(&tsc)[6] = vap.transmitCounter;
    cli_printf("WPA keyIdx=%d, keyLen=%d, keyStatus=%d, gTsc=%02x%02x%02x%02x%02x%02x\n", vap.keyIndex, vap.keyLength,
               vap.keyStatus, tsc[0], tsc[1], tsc[2], tsc[3], tsc[4], tsc[5]);
    char digits[sizeof vap.key * 2 + sizeof vap.key / 4] = "";
    char* out = digits;
    const std::size_t length = std::min<std::size_t>(vap.keyLength, sizeof vap.key);
    for (std::size_t i = 0; i < length; ++i) {
        if (i != 0 && i % 4 == 0)
            *out++ = ' ';
        out = putHex(out, vap.key[i]);
    }
    *out = '\0';
    cli_printf("           key=%s\n", digits);
}

void printServers(const char* heading, std::span<const char[64]> servers)
{
    cli_print(heading);
    for (const auto& server : servers)
        if (server[0] != '\0')
            cli_printf("%-18.64s ", server);
    cli_print("\n");
}

bool usesRadius(const VapRecord& vap)
{
    const std::string_view authentication(vap.authentication, strnlen(vap.authentication, sizeof vap.authentication));
    return authentication.find("RADIUS") != std::string_view::npos;
}

void printSecurity(const VapRecord& vap)
{
    cli_printf("           auth=%.36s ", vap.authentication);
    if ((vap.flags & VapRecord::kPrivacy) == 0) {
        cli_print("\n");
        return;
    }
    printKey(vap);
    if (!usesRadius(vap))
        return;
    cli_printf("           Rad  Acct ID:  %.64s\n", vap.accountingId);
    printServers("                 Server:  ", vap.authenticationServers);
    printServers("               Acct Svr:  ", vap.accountingServers);
}

void printVap(const VapRecord& vap)
{
    const auto has = [&vap](std::uint32_t flag) { return (vap.flags & flag) != 0; };
    const bool standalone = has(VapRecord::kStandalone);

    cli_print(kRule);
    cli_printf("Radio Id %2d WLAN Id %2d %.33s %s(%s) %s %s/%s\n", vap.radio, vap.wlan, vap.name,
               vap.adminDown != 0 ? "ADMIN_DOWN" : "ADMIN_UP", vap.interfaceDown != 0 ? "INTF_DOWN" : "INTF_UP",
               vap.initialised != 0 ? "init_done" : "init_going", ipv4Text(vap.address).text,
               ipv4Text(vap.netmask).text);
    cli_printf("           vlanid=%d, intf=%.16s, vap=%p, bssid=%s\n", vap.vlan, vap.interface,
               std::bit_cast<void*>(std::uintptr_t{vap.handle}), macText(vap.bssid).text);
    cli_printf("           mesh backhaul=%s\n", switchWord(vap.meshBackhaul));
    cli_printf("           standalone=%s\n", enabledWord(standalone));
    cli_printf("           local_switching=%s, local_bridging=%s split_tunnel=%s\n",
               enabledWord(has(VapRecord::kLocalSwitching)), enabledWord(has(VapRecord::kLocalBridging)),
               enabledWord(has(VapRecord::kSplitTunnel)));
    cli_printf("           local_auth=%s\n", enabledWord(has(VapRecord::kLocalAuthentication)));
    cli_printf("           mac=%s, tunnel=%s, cap=%04x, qos=%s\n",
               standalone ? "fat" : nameOf(kMacModes, vap.macMode, "invalid"),
               standalone ? "local" : nameOf(kTunnels, vap.tunnel, "invalid"), vap.flags >> VapRecord::kCapabilityShift,
               switchWord(vap.qos));
    cli_printf("           prob_resp_suppress=%s", switchWord(vap.probeSuppression));
    if (vap.probeSuppression != 0)
        cli_printf(", prob_resp_thresh=%ddBm\n", vap.probeThreshold);
    else
        cli_print("\n");
    cli_printf("           access_control_list=%s\n", switchWord(vap.accessControlList));
    printSecurity(vap);
    if (standalone && has(VapRecord::kCaptivePortal))
        cli_printf("           cpauth enabled with WebAuthSvr=%.64s\n", vap.portalServer);
}

} // namespace

void printVapList(std::span<const std::uint8_t> reply)
{
    const ReplyList list = replyList(reply, sizeof(VapRecord));
    const auto total = static_cast<std::int32_t>(list.count);

    cli_printf("\nTotal: %d\n", total);
    for (std::size_t i = 0; i < list.listed; ++i)
        printVap(recordAt<VapRecord>(reply, ReplyList::kHeadLength + i * sizeof(VapRecord)));
    cli_print(kRule);
    cli_printf("\nTotal: %d\n", total);
}
