#include "diag/chipset_status.h"

#include <string_view>

#include "diag/value_names.h"
#include "diag/wireless.h"
#include "platform/system_library.h"
#include "shell/output.h"

namespace
{

constexpr int kTextSize = 256;

constexpr const char* kReportedInterfaces[] = {
    "wlan0", "wlan0-va0", "wlan0-va1", "wlan0-va2", "wlan0-va3",
    "wlan1", "wlan1-va0", "wlan1-va1", "wlan1-va2", "wlan1-va3",
};

constexpr const char* kAuthTypes[] = {"OPEN", "WPA-PSK", "WPA2-PSK", "WPA/WPA2-PSK", "DOT1X"};

using InterfaceGetter = int (*)(const char* interface);

/// The result of a driver operation; -1 if the driver does not have it.
int ask(InterfaceGetter get, const char* interface)
{
    return get != nullptr ? get(interface) : -1;
}

bool isEnabled(InterfaceGetter get, const char* interface)
{
    return get != nullptr && get(interface) != 0;
}

const char* switchLabel(bool on)
{
    return on ? "Enable" : "Disable";
}

/// Whether the interface is that of a radio and not that of a VAP.
bool isRadio(std::string_view interface)
{
    constexpr std::size_t kShortestVirtualName = 6;
    return interface.size() < kShortestVirtualName;
}

void printSsid(const char* interface)
{
    char buffer[kTextSize] = "";
    const char* ssid =
        wirelessApi.get_ssid != nullptr ? wirelessApi.get_ssid(interface, buffer, sizeof buffer) : nullptr;
    cli_printf("\tSSID        : %.256s\n", ssid != nullptr && ssid[0] != '\0' ? ssid : "NULL");
}

void printRadioMode(const char* interface)
{
    char mode[kTextSize] = "";
    const bool known = wirelessApi.get_radio_mode != nullptr && wirelessApi.get_radio_mode(interface, mode) == 0;
    cli_printf("\tRadioMode   : %.256s\n", known ? mode : "Unknown");
}

void printCountry(const char* interface)
{
    char country[kTextSize] = "";
    const bool known =
        wirelessApi.get_country != nullptr && wirelessApi.get_country(interface, country, sizeof country) == 0;
    cli_printf("\tCountryCode : %.256s\n", known ? country : "Unknown");
}

void printSettings(const char* interface)
{
    const wlan_api& api = wirelessApi;
    printSsid(interface);
    cli_printf("\tBroadSSID   : %s\n", switchLabel(isEnabled(api.get_broadcast_ssid, interface)));
    cli_printf("\tTunnelMode  : %s\n", isEnabled(api.get_local_bridging, interface) ? "LOCAL BR" : "TUNNEL");
    cli_printf("\tAuthType    : %s\n",
               nameOf(kAuthTypes, static_cast<unsigned>(ask(api.get_auth_type, interface)), "Unknown"));
    printRadioMode(interface);
    cli_printf("\tBeaconIntv  : %d\n", ask(api.get_beacon_interval, interface));
    cli_printf("\tFragThres   : %d\n", ask(api.get_frag_threshold, interface));
    cli_printf("\tRtsThres    : %d\n", ask(api.get_rts_threshold, interface));
    cli_printf("\tDTIM Period : %d\n", ask(api.get_dtim_period, interface));
    if (!isRadio(interface))
        return;
    cli_printf("\tCoexist     : %s\n", switchLabel(isEnabled(api.get_coexist, interface)));
    cli_printf("\tChannel     : %d\n", ask(api.get_channel, interface));
    printCountry(interface);
}

} // namespace

int chipsetStatusCommand(int, char**)
{
    for (const char* interface : kReportedInterfaces) {
        if (sys_intf_status(interface) == 0) {
            cli_printf("%s disable\n", interface);
            continue;
        }
        cli_printf("%s enable\n", interface);
        printSettings(interface);
    }
    return 0;
}
