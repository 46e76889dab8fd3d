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

void settingName(const char* interface, const char* setting, char (&name)[kSettingNameSize])
{
    std::snprintf(name, sizeof name, "interfaces/%s/%s", interface, setting);
}

} // namespace

bool simIsInterface(const char* name)
{
    return std::ranges::any_of(kInterfaces,
                               [name](const char* interface) { return std::strcmp(interface, name) == 0; });
}

void simInterfaceText(const char* interface, const char* setting, char* buffer, std::size_t size)
{
    char name[kSettingNameSize];
    settingName(interface, setting, name);
    simReadText(name, buffer, size, "");
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
