#include "platform/simulation/daemon/hardware_address.h"

#include <algorithm>

#include "platform/flash_layout.h"
#include "platform/system_library.h"

namespace
{

constexpr HardwareAddress kDefaultBase = {0x02, 0x1a, 0x2b, 0x00, 0x01, 0x00};

} // namespace

HardwareAddress baseAddress()
{
    PlatformInfo info{};
    get_qln_platform_info(&info);
    HardwareAddress address{};
    std::ranges::copy(info.mac, address.begin());
    return address == HardwareAddress{} ? kDefaultBase : address;
}

HardwareAddress vapAddress(unsigned radio, unsigned vap)
{
    HardwareAddress address = baseAddress();
    address.back() = static_cast<uint8_t>(address.back() + 16 * (radio + 1) + vap + 1);
    return address;
}
