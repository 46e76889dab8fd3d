#include "diag/radio_power.h"

#include <array>
#include <bit>
#include <cstdint>

#include "diag/exchange.h"
#include "platform/daemon_records.h"

int setRadioPower(int radio, int power, bool percent)
{
    const PowerMessage message{static_cast<std::uint8_t>(radio), percent, static_cast<std::uint16_t>(power)};
    return sendToDaemon(kSetPower, std::bit_cast<std::array<std::uint8_t, sizeof message>>(message));
}
