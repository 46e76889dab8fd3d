#include "diag/get_tree.h"

#include <cstddef>
#include <cstdint>

#include "diag/ap_info.h"
#include "diag/chipset_status.h"
#include "diag/exchange.h"
#include "diag/radio_info.h"
#include "diag/station_list.h"
#include "diag/system_info.h"
#include "diag/vap_list.h"
#include "diag/wireless.h"

namespace
{

enum : std::size_t { kVapQuery, kApQuery, kStationQuery, kRadioQuery };

constexpr StatusQuery kQueries[] = {
    {1, 22180, "System busy\n", printVapList},
    {2, 2992, "System is busy, please try again.\n", printApInfo},
    {3, 65536, nullptr, printStationList},
    {5, 65536, "System busy\n", printRadioInfo},
};

/// The VAP query carries what is left of the handler's arguments in one byte each; the others carry zeros.
template <std::size_t Query>
int queryCommand(int argc, char** argv)
{
    std::uint8_t request[kQueryRequestLength]{};
    if constexpr (Query == kVapQuery) {
        request[0] = static_cast<std::uint8_t>(argc);
        request[1] = static_cast<std::uint8_t>(reinterpret_cast<std::uintptr_t>(argv));
    }
    return queryDaemon(kQueries[Query], request);
}

constinit cli_node vapTable[] = {
    command("chipset-status", "Chipset status.", chipsetStatusCommand),
    command("cfg-info", "Config information.", queryCommand<kVapQuery>),
};

constinit cli_node wtpTable[] = {
    command("info", "AP state information.", queryCommand<kApQuery>),
    command("stations", "Stations information.", queryCommand<kStationQuery>),
};

constinit cli_node radioTable[] = {
    command("info", "Radio information.", queryCommand<kRadioQuery>),
};

constinit cli_node systemTable[] = {
    command("version", "Version information.", versionCommand),
    command("performance", "System performance information.", performanceCommand),
};

constinit cli_node qskyTable[] = {
    command("info", "Quillsky information.", cloudInfoCommand),
};

} // namespace

constinit cli_node getTable[5] = {
    prepared(group("vap", "Wireless information.", vapTable), vapPrepare),
    group("wtp", "AP information.", wtpTable),
    group("radio", "Radio information.", radioTable),
    group("system", "System information.", systemTable),
    group("qsky", "Quillsky information.", qskyTable),
};
