#include "platform/simulation/daemon/hardware_address.h"

#include <algorithm>

#include "platform/simulation/identity.h"
#include "platform/simulation/interface_state.h"

HardwareAddress baseAddress()
{
    return std::to_array(simIdentity().mac);
}

HardwareAddress interfaceAddress(const std::string& interface)
{
    HardwareAddress address = baseAddress();
    const int offset = simInterfaceNumber(interface.c_str(), "mac_offset");
    address.back() = static_cast<uint8_t>(address.back() + offset);
    return address;
}
