#include "diag/get_tree.h"

#include <cstdint>

#include "diag/ap_info.h"
#include "diag/chipset_status.h"
#include "diag/exchange.h"
#include "diag/radio_info.h"
#include "diag/reply.h"
#include "diag/station_list.h"
#include "diag/system_info.h"
#include "diag/vap_list.h"
#include "diag/wireless.h"
#include "platform/daemon_records.h"

namespace
{

constexpr char kBusy[] = "System busy\n";
constexpr int kMostVaps = 8;
constexpr int kVapReplyLength = static_cast<int>(ReplyList::kHeadLength + kMostVaps * sizeof(VapRecord));

constexpr StatusQuery kVapQuery{kQueryVaps, kVapReplyLength, kBusy, printVapList};
constexpr StatusQuery kApQuery{kQueryAccessPoint, ApInfo::kReplyLength, kSystemIsBusy, printApInfo};
constexpr StatusQuery kStationQuery{kQueryStations, 65536, nullptr, printStationList};
constexpr StatusQuery kRadioQuery{kQueryRadios, 65536, kBusy, printRadioInfo};

template <const StatusQuery& Query>
int queryCommand(int, char**)
{
    constexpr std::uint8_t kRequest[kQueryRequestLength]{};
    return queryDaemon(Query, kRequest);
}

/// The two bytes of the request are the low byte of `argc` and the low byte of the pointer `argv`. They mean nothing,
/// but the request has always had these two bytes.
int vapQueryCommand(int argc, char** argv)
{
    const std::uint8_t request[kQueryRequestLength]{static_cast<std::uint8_t>(argc),
                                                    static_cast<std::uint8_t>(reinterpret_cast<std::uintptr_t>(argv))};
    return queryDaemon(kVapQuery, request);
}

constinit cli_node getVapTable[] = {
    command("chipset-status", "Chipset status.", chipsetStatusCommand),
    command("cfg-info", "Config information.", vapQueryCommand),
};

constinit cli_node getWtpTable[] = {
    command("info", "AP state information.", queryCommand<kApQuery>),
    command("stations", "Stations information.", queryCommand<kStationQuery>),
};

constinit cli_node getRadioTable[] = {
    command("info", "Radio information.", queryCommand<kRadioQuery>),
};

constinit cli_node getSystemTable[] = {
    command("version", "Version information.", versionCommand),
    command("performance", "System performance information.", performanceCommand),
};

constinit cli_node getQskyTable[] = {
    command("info", "Quillsky information.", cloudInfoCommand),
};

} // namespace

constinit cli_node getTable[5] = {
    prepared(group("vap", "Wireless information.", getVapTable), vapPrepare),
    group("wtp", "AP information.", getWtpTable),
    group("radio", "Radio information.", getRadioTable),
    group("system", "System information.", getSystemTable),
    group("qsky", "Quillsky information.", getQskyTable),
};
