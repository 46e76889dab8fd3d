#include "platform/simulation/interface_state.h"

#include <cstdio>
#include <cstdlib>

#include "platform/simulation/flash.h"
#include "platform/simulation/state.h"

namespace
{

struct StateName {
    StateName(const char* interface, const char* setting)
    {
        std::snprintf(text, sizeof text, "interfaces/%s/%s", interface, setting);
    }

    char text[96];
};

} // namespace

bool simIsInterface(const char* name)
{
    char offset[8];
    return simReadText(StateName(name, "mac_offset").text, offset, sizeof offset, "");
}

std::array<uint8_t, 6> simHardwareAddress(const char* interface)
{
    std::array<uint8_t, 6> address = std::to_array(simIdentity().mac);
    address.back() = static_cast<uint8_t>(address.back() + simInterfaceNumber(interface, "mac_offset"));
    return address;
}

bool simInterfaceRuns(const char* name)
{
    char radio[sizeof "wlan0"];
    std::snprintf(radio, sizeof radio, "%s", name);
    return simInterfaceNumber(name, "up") != 0 && simInterfaceNumber(radio, "up") != 0 &&
           simReadNumber(StateName(name, "served").text, 1) != 0;
}

void simInterfaceText(const char* interface, const char* setting, char* buffer, std::size_t size)
{
    simReadText(StateName(interface, setting).text, buffer, size, "");
}

int simInterfaceNumber(const char* interface, const char* setting)
{
    return simReadNumber(StateName(interface, setting).text, 0);
}

bool simSetInterfaceText(const char* interface, const char* setting, const char* text)
{
    return simWriteText(StateName(interface, setting).text, text);
}

bool simSetInterfaceNumber(const char* interface, const char* setting, int value)
{
    return simWriteNumber(StateName(interface, setting).text, value);
}
