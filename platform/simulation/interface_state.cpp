#include "platform/simulation/interface_state.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/simulation/state.h"

namespace
{

constexpr std::size_t kSettingNameSize = 96;

constexpr const char* kInterfaces[] = {"wlan0", "wlan0-va0", "wlan0-va1", "wlan0-va2", "wlan0-va3",
                                       "wlan1", "wlan1-va0", "wlan1-va1", "wlan1-va2", "wlan1-va3"};

/// What is not listed is empty: an interface without an "up" is down.
struct SettingDefault {
    const char* setting;
    const char* interface; ///< the first characters of the interfaces that it holds for
    const char* value;
};

/// The first row that fits holds.
constexpr SettingDefault kInterfaceDefaults[] = {
    {"ssid", "wlan0-va0", "office"},
    {"ssid", "wlan0-va1", "guest"},
    {"ssid", "wlan0-va2", "scanners"},
    {"ssid", "wlan0-va3", "spare-2g"},
    {"ssid", "wlan1-va0", "office"},
    {"ssid", "wlan1-va1", "guest"},
    {"ssid", "wlan1-va2", "branch"},
    {"ssid", "wlan1-va3", "backhaul"},
    {"broadcast_ssid", "wlan0-va2", "0"},
    {"broadcast_ssid", "wlan1-va3", "0"},
    {"broadcast_ssid", "", "1"},
    {"channel", "wlan0", "6"},
    {"channel", "wlan1", "36"},
    {"beacon_interval", "", "100"},
    {"dtim_period", "", "1"},
    {"rts_threshold", "", "2346"},
    {"frag_threshold", "", "2346"},
    {"coexist", "wlan0", "1"},
    {"coexist", "wlan1", "0"},
    {"radio_mode", "wlan0", "11N_2.4G"},
    {"radio_mode", "wlan1", "11AC"},
    {"auth_type", "wlan0-va0", "4"},
    {"auth_type", "wlan1-va0", "4"},
    {"auth_type", "wlan0-va3", "3"},
    {"auth_type", "wlan1-va2", "2"},
    {"auth_type", "wlan1-va3", "2"},
    {"auth_type", "", "0"},
    {"local_bridging", "wlan0-va1", "1"},
    {"local_bridging", "wlan1-va1", "1"},
    {"local_bridging", "wlan1-va2", "1"},
    {"local_bridging", "", "0"},
    {"country", "", "US"},
    {"mib/use40M", "wlan0", "1"},
    {"mib/use40M", "wlan1", "2"},
};

void settingName(const char* interface, const char* setting, char (&name)[kSettingNameSize])
{
    std::snprintf(name, sizeof name, "interfaces/%s/%s", interface, setting);
}

const char* defaultOf(const char* interface, const char* setting)
{
    for (const SettingDefault& row : kInterfaceDefaults)
        if (std::strcmp(row.setting, setting) == 0 &&
            std::strncmp(row.interface, interface, std::strlen(row.interface)) == 0)
            return row.value;
    return "";
}

} // namespace

std::span<const char* const> simInterfaces()
{
    return kInterfaces;
}

bool simIsInterface(const char* name)
{
    return std::ranges::any_of(kInterfaces,
                               [name](const char* interface) { return std::strcmp(interface, name) == 0; });
}

void simInterfaceText(const char* interface, const char* setting, char* buffer, std::size_t size)
{
    char name[kSettingNameSize];
    settingName(interface, setting, name);
    simReadText(name, buffer, size, defaultOf(interface, setting));
}

int simInterfaceNumber(const char* interface, const char* setting)
{
    char text[16];
    simInterfaceText(interface, setting, text, sizeof text);
    return std::atoi(text);
}

bool simSetInterfaceText(const char* interface, const char* setting, const char* text)
{
    char name[kSettingNameSize];
    settingName(interface, setting, name);
    return simWriteText(name, text);
}

bool simSetInterfaceNumber(const char* interface, const char* setting, int value)
{
    char name[kSettingNameSize];
    settingName(interface, setting, name);
    return simWriteNumber(name, value);
}
