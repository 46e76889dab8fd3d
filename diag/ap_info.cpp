#include "diag/ap_info.h"

#include <ctime>

#include "base/address.h"
#include "diag/reply.h"
#include "diag/value_names.h"
#include "platform/daemon_records.h"
#include "shell/output.h"

namespace
{

constexpr const char* kApModes[] = {"thin AP", "fat AP", "site survey"};
constexpr const char* kLanModes[] = {"offline   ", "NAT-TO-WAN", "BR--TO-WAN", "BR-TO-SSID"};

/// A time as text: 24 characters and a line feed.
const char* dateText(std::time_t seconds)
{
    return std::asctime(std::gmtime(&seconds));
}

const char* flagWord(const LanPort& port, std::uint8_t flag, const char* word)
{
    return (port.flags & flag) != 0 ? word : "";
}

void printLanPort(int number, const LanPort& port)
{
    const char* mode = nameOf(kLanModes, port.mode, "??????????");
    if (port.mode != LanPort::kBridgedToSsid) {
        cli_printf("            port%d-cfg    : %s(%d) \n", number, mode, port.mode);
        return;
    }
    cli_printf("            port%d-cfg    : %s(%d) %d %s ssid=%-16.33s vlan_tag=%04x %s%s%s%s%s\n", number, mode,
               port.mode, port.secondNumber, macText(port.addresses.mac).text, port.ssid, port.vlanTag,
               flagWord(port, LanPort::kSt, "st "), flagWord(port, LanPort::kLocalSwitching, "lsw "),
               flagWord(port, LanPort::kLocalBridging, "lbr "), flagWord(port, LanPort::kSplitTunnel, "split "),
               flagWord(port, LanPort::kMesh, "mesh "));
    if ((port.flags & LanPort::kSplitTunnel) != 0)
        cli_printf("                              %s %s\n", ipv4Text(port.addresses.splitTunnel.first).text,
                   ipv4Text(port.splitTunnelSecond).text);
}

void printLanPorts(std::span<const std::uint8_t> reply, std::int32_t count)
{
    std::size_t offset = ApInfo::kLanPortOffset;
    for (int i = 0; i < count && offset < reply.size(); ++i, offset += sizeof(LanPort))
        printLanPort(i + 1, recordAt<LanPort>(reply, offset));
}

void printFragmentPrevention(const ApInfo& info)
{
    if (info.fragmentPrevention == 0) {
        cli_print("    ip-frag-prevent      : disabled\n");
        return;
    }
    cli_printf("    ip-frag-prevent      : %s %s (ul_mtu=%d dl_mtu=%d)\n",
               (info.fragmentPrevention & ApInfo::kTcpMss) != 0 ? "TCP_MSS" : "",
               (info.fragmentPrevention & ApInfo::kTunnelMtu) != 0 ? "TUN_MTU" : "", info.uplinkMtu, info.downlinkMtu);
}

} // namespace

void printApInfo(std::span<const std::uint8_t> reply)
{
    const auto info = recordAt<ApInfo>(reply, 0);

    cli_print("WTP Configuration\n");
    cli_printf("    name                 : %.36s\n", info.name);
    cli_printf("    loc                  : %.36s\n", info.location);
    cli_printf("    ap mode              : %s\n", nameOf(kApModes, info.apMode, "thin AP"));
    cli_printf("    radio cnt            : %d\n", info.radioCount);
    cli_printf("    echo-interval        : %d\n", info.echoInterval);
    cli_printf("    discovery-interval   : %d\n", info.discoveryInterval);
    cli_printf("    report-interval      : %d\n", info.reportInterval);
    cli_printf("    idle-timeout         : %d\n", info.idleTimeout);
    cli_printf("    statistics-interval  : %d\n", info.statisticsInterval);
    cli_printf("    sta-stats-interval   : %d\n", info.stationStatisticsInterval);
    cli_printf("    vap-stats-interval   : %d\n", info.vapStatisticsInterval);
    cli_printf("    radio-stats-interval : %d\n", info.radioStatisticsInterval);
    cli_printf("    sta-cap-interval     : %d\n", info.stationCapabilityInterval);
    if (info.downloading != 0)
        cli_printf("    fsm-state            : %.36s + Image Downloading %u/%u\n", info.state, info.imageReceived,
                   info.imageTotal);
    else
        cli_printf("    fsm-state            : %.36s\n", info.state);
    cli_printf("    wtp-ip-addr          : %s\n", ipv4Text(info.apAddress).text);
    cli_printf("    ac-ip-addr           : %s:%d,%d\n", ipv4Text(info.acAddress).text, info.acPorts[0],
               info.acPorts[1]);
    cli_printf("    retry count          : %d\n", info.retryCount);
    cli_printf("    retry reason         : %.64s\n", info.retryReason);
    cli_print("    connect time         : ");
    cli_printLines(dateText(info.connectTime));
    cli_print("\n");
    cli_printf("    base-mac             : %s\n", macText(info.baseMac).text);
    cli_printf("    bulk data seq num    : %d\n", info.bulkSequence);
    cli_printf("    ap-mgmt-vlanid       : %d\n", info.managementVlan);
    cli_printf("    data-channel-security: %s\n",
               info.dataSecurity == ApInfo::kClearText ? "clear-text" : "dtls-enabled");
    if ((info.dataSecurity & ApInfo::kDtlsDetails) != 0) {
        cli_printf("    dtls-in-kernel       : %s\n", enabledWord(info.dtlsInKernel != 0));
        cli_printf("    cipher               : %.36s\n", info.dtlsCipher);
    }
    printFragmentPrevention(info);
    cli_printf("    LAN port cnt         : %d\n", info.lanPortCount);
    printLanPorts(reply, info.lanPortCount);
}
