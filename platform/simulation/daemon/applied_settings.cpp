#include "platform/simulation/daemon/applied_settings.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "platform/daemon_records.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/radio_state.h"

namespace
{

constexpr const char* kRadios[] = {"wlan0", "wlan1"};

/// Copies the record out of the message. Returns no record if the length of the message is not that of the record.
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
    return std::ranges::all_of(kRadios, [country](const char* radio) { return simSetCountry(radio, *country); });
}

bool applyPower(std::span<const uint8_t> message)
{
    const auto wanted = read<PowerMessage>(message);
    if (!wanted || wanted->radio >= std::size(kRadios))
        return false;
    const char* radio = kRadios[wanted->radio];
    const int value = static_cast<int16_t>(wanted->power);
    const int maximum = simRadio(radio).maximumPower;
    const int percent = wanted->percent != 0 || maximum == 0 ? value : std::clamp(value, 0, maximum) * 100 / maximum;
    return simSetInterfaceNumber(radio, "power", std::clamp(percent, 0, 100));
}
