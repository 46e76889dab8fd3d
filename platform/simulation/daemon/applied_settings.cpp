#include "platform/simulation/daemon/applied_settings.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "platform/daemon_records.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/regulatory_table.h"
#include "platform/simulation/state.h"

namespace
{

constexpr char kCountryState[] = "daemon/country";
constexpr const char* kPowerStates[] = {"daemon/power0", "daemon/power1"};

/// Calibrated maximum of each radio in dBm.
constexpr int kMaximumPower[] = {20, 18};

/// None: a message of another length.
template <typename Record>
std::optional<Record> read(std::span<const uint8_t> message)
{
    Record record;
    if (message.size() != sizeof record)
        return std::nullopt;
    std::memcpy(&record, message.data(), sizeof record);
    return record;
}

} // namespace

bool applyCountry(std::span<const uint8_t> message)
{
    const auto wanted = read<CountryMessage>(message);
    const RegulatoryCountry* country = wanted ? simCountryByNumber(wanted->code) : nullptr;
    if (country == nullptr || std::memcmp(wanted->name, country->code, sizeof country->code) != 0)
        return false;
    bool done = simWriteText(kCountryState, country->code);
    for (const char* interface : simInterfaces())
        done = simSetInterfaceText(interface, "country", country->code) && done;
    return done;
}

bool applyPower(std::span<const uint8_t> message)
{
    const auto wanted = read<PowerMessage>(message);
    if (!wanted || wanted->radio >= std::size(kPowerStates))
        return false;
    const unsigned radio = wanted->radio;
    const int value = static_cast<int16_t>(wanted->power);
    const int percent =
        wanted->percent != 0 ? value : std::clamp(value, 0, kMaximumPower[radio]) * 100 / kMaximumPower[radio];
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
