#include "diag/station_list.h"

#include "base/address.h"
#include "diag/reply.h"
#include "diag/value_names.h"
#include "platform/daemon_records.h"
#include "shell/output.h"

namespace
{

constexpr const char* kInvalidType = "invalid  ";
constexpr const char* kStationTypes[] = {kInvalidType, "wl----sta", "wl--m-sta", "wl-m-host"};

void printStation(const StationRecord& station)
{
    cli_printf("=== %3d ======================================\n", station.number);
    cli_printf("    AID         : %x\n", station.aid);
    cli_printf("    MAC         : %s\n", macText(station.mac).text);
    cli_printf("    BSSID       : %s\n", macText(station.bssid).text);
    cli_printf("    VAP         : wlan%d-va%d\n", station.radio, station.vap);
    cli_printf("    SSID        : %.33s\n", station.ssid);
    cli_printf("    Type        : %s\n", nameOf(kStationTypes, station.type, kInvalidType));
    cli_printf("    VlanID      : %d\n", station.vlan);
}

} // namespace

void printStationList(std::span<const std::uint8_t> reply)
{
    const ReplyList list = replyList(reply, sizeof(StationRecord));
    for (std::size_t i = 0; i < list.listed; ++i)
        printStation(recordAt<StationRecord>(reply, ReplyList::kHeadLength + i * sizeof(StationRecord)));
    cli_print("================================================== \n");
    cli_printf("\nTotal: %d\n", static_cast<std::int32_t>(list.count));
}
