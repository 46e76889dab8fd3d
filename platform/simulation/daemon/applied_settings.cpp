#include "platform/simulation/daemon/applied_settings.h"

#include <algorithm>
#include <cstring>

#include "platform/simulation/interface_state.h"
#include "platform/simulation/regulatory_table.h"
#include "platform/simulation/state.h"

namespace
{

constexpr char kCountryState[] = "daemon/country";
constexpr const char* kPowerStates[] = {"daemon/power0", "daemon/power1"};

/// Calibrated maximum of each radio in dBm.
constexpr int kMaximumPower[] = {20, 18};

constexpr std::size_t kCountryMessageSize = 8;
constexpr std::size_t kPowerMessageSize = 4;

/// Two bytes in host byte order.
uint16_t wordAt(std::span<const uint8_t> message, std::size_t offset)
{
    uint16_t word = 0;
    std::memcpy(&word, &message[offset], sizeof word);
    return word;
}

} // namespace

bool applyCountry(std::span<const uint8_t> message)
{
    if (message.size() != kCountryMessageSize)
        return false;
    const RegulatoryCountry* country = simCountryByNumber(wordAt(message, 2));
    if (country == nullptr || std::memcmp(&message[4], country->code, sizeof country->code) != 0)
        return false;
    bool done = simWriteText(kCountryState, country->code);
    for (const char* interface : simInterfaces())
        done = simSetInterfaceText(interface, "country", country->code) && done;
    return done;
}

bool applyPower(std::span<const uint8_t> message)
{
    if (message.size() != kPowerMessageSize || message[0] >= std::size(kPowerStates))
        return false;
    const unsigned radio = message[0];
    const bool isPercent = message[1] != 0;
    const int value = static_cast<int16_t>(wordAt(message, 2));
    const int percent = isPercent ? value : std::clamp(value, 0, kMaximumPower[radio]) * 100 / kMaximumPower[radio];
    return simWriteNumber(kPowerStates[radio], std::clamp(percent, 0, 100));
}

std::string configuredCountry()
{
    char operating[8];
    char country[8];
    simInterfaceText("wlan0", "country", operating, sizeof operating);
    simReadText(kCountryState, country, sizeof country, operating);
    return country;
}

int transmitPower(unsigned radio)
{
    return simReadNumber(kPowerStates[radio], 100);
}
