#include "platform/simulation/debug_tables.h"

#include <array>

namespace
{

struct SubmoduleText {
    const char* name;
    const char* help;
};

template <std::size_t Size>
consteval void setText(char (&field)[Size], const char* text)
{
    for (std::size_t i = 0; text[i] != '\0'; ++i)
        field[i] = text[i];
}

/// A submodule's id is its place in the table.
template <std::size_t Count>
consteval std::array<dbg_submodule, Count> numbered(const SubmoduleText (&texts)[Count])
{
    std::array<dbg_submodule, Count> submodules{};
    for (std::size_t i = 0; i < Count; ++i) {
        submodules[i].id = static_cast<int32_t>(i);
        setText(submodules[i].name, texts[i].name);
        setText(submodules[i].help, texts[i].help);
    }
    return submodules;
}

template <std::size_t Count>
constexpr dbg_module module(std::array<dbg_submodule, Count>& submodules)
{
    return {Count, submodules.data()};
}

constinit auto cwWtpdSubmodules = numbered({
    {"main", "Start, stop and main loop"},
    {"fsm", "State machine"},
    {"config", "Configuration file"},
    {"ipc", "Messages from other processes"},
    {"timer", "Timers"},
    {"discovery", "Discovery of controllers"},
    {"dhcp", "Controller addresses from DHCP"},
    {"dns", "Controller addresses from DNS"},
    {"join", "Join to a controller"},
    {"configure", "Configuration by the controller"},
    {"image", "Firmware download"},
    {"run", "Requests in run state"},
    {"echo", "Echo and keep-alive"},
    {"ctrl-rx", "Control messages received"},
    {"ctrl-tx", "Control messages sent"},
    {"retransmit", "Retransmission of control messages"},
    {"fragment", "Fragments and reassembly"},
    {"element", "Message elements"},
    {"dtls", "DTLS of the control channel"},
    {"dtls-data", "DTLS of the data channel"},
    {"data-rx", "Data frames received"},
    {"data-tx", "Data frames sent"},
    {"stats", "Statistics reports"},
    {"event", "Events to the controller"},
    {"radio", "Radio settings"},
    {"channel", "Channel selection"},
    {"power", "Transmit power"},
    {"country", "Regulatory country"},
    {"dfs", "Radar detection"},
    {"scan", "Background scan"},
    {"vap", "Virtual access points"},
    {"key", "Keys"},
    {"station", "Station table"},
    {"roaming", "Roaming of stations"},
    {"wids", "Intrusion detection"},
    {"rogue", "Rogue access points"},
    {"bridge", "Local bridging"},
    {"vlan", "VLAN assignment"},
});
static_assert(cwWtpdSubmodules.size() > 32);

constinit auto authSubmodules = numbered({
    {"main", "Start, stop and main loop"},
    {"radius", "RADIUS exchange"},
    {"portal", "Captive portal"},
});

constinit auto netSubmodules = numbered({
    {"main", "Start, stop and main loop"},
    {"dhcp", "DHCP client"},
});

constinit auto systemSubmodules = numbered({
    {"main", "Start, stop and main loop"},
    {"watchdog", "Watchdog"},
});

constinit auto cloudSubmodules = numbered({
    {"main", "Start, stop and main loop"},
    {"connect", "Connection"},
    {"tls", "TLS session"},
    {"request", "Requests"},
    {"report", "Reports"},
});

constinit auto wlanSubmodules = numbered({
    {"beacon", "Beacons"},
    {"auth", "Authentication frames"},
    {"rx", "Frames received"},
    {"tx", "Frames sent"},
});

constinit auto captunSubmodules = numbered({
    {"session", "Sessions"},
    {"encap", "Encapsulation"},
    {"decap", "Decapsulation"},
    {"fragment", "Fragments and reassembly"},
    {"dtls", "DTLS records"},
    {"drop", "Dropped frames"},
});

constinit auto bridgeSubmodules = numbered({
    {"fdb", "Forwarding table"},
    {"forward", "Forwarded frames"},
});

constinit auto filterSubmodules = numbered({
    {"rule", "Rule table"},
    {"match", "Matches"},
    {"drop", "Dropped packets"},
    {"count", "Hit counters"},
});

} // namespace

constexpr const char* kSimAppNames[kDebugAppCount] = {"cwWtpd", "authd", "netd", "sysmond", "cloudd"};
static_assert(kSimAppNames[kDebugAppCount - 1] != nullptr);

constinit dbg_module app_debug[kDebugAppCount] = {
    module(cwWtpdSubmodules), module(authSubmodules),  module(netSubmodules),
    module(systemSubmodules), module(cloudSubmodules),
};

constexpr const char* kSimKernelModuleNames[kDebugKernelModuleCount] = {"wlan", "captun", "apbridge", "apfilter"};
static_assert(kSimKernelModuleNames[kDebugKernelModuleCount - 1] != nullptr);

constinit dbg_module kmod_debug[kDebugKernelModuleCount] = {
    module(wlanSubmodules),
    module(captunSubmodules),
    module(bridgeSubmodules),
    module(filterSubmodules),
};
