#include "platform/simulation/daemon/addresses.h"

#include <bit>
#include <cstdio>
#include <cstring>

#include "base/address.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

void takeAddress(const WtpConfig& config)
{
    char text[32];
    if (config.text("addr-mode") == "dhcp")
        simReadText("network/lease", text, sizeof text, "");
    else
        std::snprintf(text, sizeof text, "%s/%d", ipv4Text(config.address("static-ip-addr")).text,
                      std::popcount(config.address("static-ip-netmask")));
    simSetInterfaceText("eth0", "address", text);
}

uint32_t ownAddress()
{
    char text[32];
    simInterfaceText("eth0", "address", text, sizeof text);
    text[std::strcspn(text, "/")] = '\0';
    uint32_t address = 0;
    parseIpv4(text, &address);
    return address;
}
