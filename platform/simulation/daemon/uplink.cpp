#include "platform/simulation/daemon/uplink.h"

#include <bit>
#include <cstdio>
#include <cstring>

#include "base/address.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

constexpr char kWire[] = "eth0";

} // namespace

void takeAddress(const WtpConfig& config)
{
    char text[32];
    if (config.usesDhcp)
        simReadText("network/lease", text, sizeof text, "");
    else
        std::snprintf(text, sizeof text, "%s/%d", ipv4Text(config.staticAddress).text,
                      std::popcount(config.staticNetmask));
    simSetInterfaceText(kWire, "address", text);
}

uint32_t ownAddress()
{
    char text[32];
    simInterfaceText(kWire, "address", text, sizeof text);
    text[std::strcspn(text, "/")] = '\0';
    uint32_t address = 0;
    parseIpv4(text, &address);
    return address;
}

uint32_t reachingAddress()
{
    return simInterfaceNumber(kWire, "up") != 0 ? ownAddress() : 0;
}
