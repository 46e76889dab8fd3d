#include "platform/wireless_library.h"

#include <cstdio>

#include "platform/simulation/interface_state.h"
#include "platform/simulation/radio_state.h"
#include "platform/simulation/regulatory_table.h"
#include "platform/simulation/state.h"

namespace
{

/// The size of the buffer of get_radio_mode().
constexpr std::size_t kRadioModeSize = 256;

/// The size of a scan's result in bytes. The state file "scan_size" can set another size.
constexpr int kScanSize = 20000;

template <const char* Setting>
int getNumber(const char* interface)
{
    return simInterfaceNumber(interface, Setting);
}

constexpr char kDtimPeriod[] = "dtim_period";
constexpr char kRtsThreshold[] = "rts_threshold";
constexpr char kFragThreshold[] = "frag_threshold";
constexpr char kBroadcastSsid[] = "broadcast_ssid";
constexpr char kLocalBridging[] = "local_bridging";
constexpr char kAuthType[] = "auth_type";

/// Copies `text` into the buffer. Returns 0, or -1 if the text is empty.
int giveText(char* buffer, std::size_t size, const char* text)
{
    std::snprintf(buffer, size, "%s", text);
    return text[0] != '\0' ? 0 : -1;
}

int getChannel(const char* interface)
{
    return simRadio(interface).record.channel;
}

int getRadioMode(const char* interface, char* buffer)
{
    return giveText(buffer, kRadioModeSize, simRadio(interface).mode);
}

const char* getSsid(const char* interface, char* buffer, int size)
{
    if (size <= 0)
        return nullptr;
    simInterfaceText(interface, "ssid", buffer, static_cast<std::size_t>(size));
    return buffer;
}

int getCountry(const char* interface, char* buffer, int size)
{
    return size > 0 ? giveText(buffer, static_cast<std::size_t>(size), simRadio(interface).record.operatingCountry)
                    : -1;
}

int setCountry(const char* interface, int code)
{
    const RegulatoryCountry* country = simCountryByNumber(code);
    return country != nullptr && simSetCountry(interface, *country) ? 0 : -1;
}

} // namespace

int init_wlan_api(wlan_api* table)
{
    *table = {};
    table->get_coexist = [](const char* interface) -> int { return simRadio(interface).record.coexistence; };
    table->get_radio_mode = getRadioMode;
    table->get_channel = getChannel;
    table->get_beacon_interval = [](const char* interface) -> int { return simRadio(interface).record.beaconInterval; };
    table->get_dtim_period = getNumber<kDtimPeriod>;
    table->get_rts_threshold = getNumber<kRtsThreshold>;
    table->get_frag_threshold = getNumber<kFragThreshold>;
    table->get_ssid = getSsid;
    table->get_broadcast_ssid = getNumber<kBroadcastSsid>;
    table->set_country = setCountry;
    table->get_country = getCountry;
    table->get_local_bridging = getNumber<kLocalBridging>;
    table->get_auth_type = getNumber<kAuthType>;
    return 0;
}

int rtl_wlan_get_bgscan(const char* interface, int, void* buffer, int size)
{
    if (!simIsInterface(interface) || size < simReadNumber("scan_size", kScanSize))
        return -1;
    std::snprintf(static_cast<char*>(buffer), static_cast<std::size_t>(size), "02:00:5e:00:53:01 %d -60 neighbour\n",
                  getChannel(interface));
    return 1;
}

int kstr_regdmn_get_country_code(const char* country)
{
    const RegulatoryCountry* row = simCountryByCode(country);
    return row != nullptr ? row->number : 0;
}

const char* kstr_regdmn_get_default_country(const char* region_code)
{
    return simDefaultCountry(region_code);
}
