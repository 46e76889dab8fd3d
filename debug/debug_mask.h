// Debug switches: one 64-bit mask per application or kernel module, one bit per submodule.

#ifndef DEBUG_DEBUG_MASK_H
#define DEBUG_DEBUG_MASK_H

#include <cstddef>
#include <cstdint>
#include <span>

/// The switch of a submodule: bit (id modulo 32) of a signed 32-bit value, sign-extended to 64 bits, as the daemons
/// compute it. So the switch of id 31 is bits 31 to 63; every other switch is one of the bits 0 to 30.
constexpr std::uint64_t debugSwitch(int submodule)
{
    const auto bit = static_cast<std::int32_t>(std::uint32_t{1} << (static_cast<unsigned>(submodule) % 32));
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(bit));
}

/// Every switch of a mask.
inline constexpr std::uint64_t kAllDebugSwitches = ~std::uint64_t{0};

/// Turns `switches` of the mask `index` on or off. Does nothing if there is no such mask.
constexpr void turnDebugSwitches(std::span<std::uint64_t> masks, int index, std::uint64_t switches, bool on)
{
    if (index < 0 || static_cast<std::size_t>(index) >= masks.size())
        return;
    std::uint64_t& mask = masks[static_cast<std::size_t>(index)];
    mask = on ? mask | switches : mask & ~switches;
}

#endif
