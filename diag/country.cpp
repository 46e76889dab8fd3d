#include "diag/country.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "bios/platform_info.h"
#include "diag/country_table.h"
#include "diag/exchange.h"
#include "diag/radio_power.h"
#include "diag/wireless.h"
#include "platform/daemon_records.h"
#include "platform/wireless_library.h"
#include "shell/output.h"
#include "shell/tools.h"

namespace
{

/// Settings that the driver loses when the country changes.
struct RadioSetup {
    const char* interface;
    int channelWidth;
    int band;
};

constexpr RadioSetup kRadioSetups[] = {
    {"wlan0", 1, 11},
    {"wlan1", 2, 76},
};

constexpr int kFullPower = 100;

void listCountries()
{
    cli_print("All countrys supported:\n");
    for (const char* code = kCountryTexts; *code != '\0';) {
        const char* name = code + std::strlen(code) + 1;
        cli_printf("    %s - %s\n", code, name);
        code = name + std::strlen(name) + 1;
    }
}

void configureRadio(int radio, int code)
{
    const RadioSetup& setup = kRadioSetups[radio];
    runCommandf("ifconfig %s down", setup.interface);
    if (wirelessApi.set_country != nullptr)
        wirelessApi.set_country(setup.interface, code);
    runCommandf("iwpriv %s set_mib vap_enable=0", setup.interface);
    runCommandf("iwpriv %s set_mib func_off=0", setup.interface);
    runCommandf("iwpriv %s set_mib disable_DFS=1", setup.interface);
    runCommandf("iwpriv %s set_mib use40M=%d", setup.interface, setup.channelWidth);
    runCommandf("iwpriv %s set_mib band=%d", setup.interface, setup.band);
    runCommandf("ifconfig %s up", setup.interface);
    setRadioPower(radio, kFullPower, true);
}

int announceCountry(const char* name, int code)
{
    CountryMessage message{};
    message.code = static_cast<std::uint16_t>(code);
    std::memcpy(message.name, name, strnlen(name, sizeof message.name));
    return sendToDaemon(kSetCountry, std::bit_cast<std::array<std::uint8_t, sizeof message>>(message));
}

int changeCountry(const char* name)
{
    const int code = name != nullptr ? kstr_regdmn_get_country_code(name) : 0;
    if (code == 0) {
        cli_printf("Can NOT find any country named %s.\n", name != nullptr ? name : "NULL");
        listCountries();
        return 0;
    }
    for (int radio = 0; radio < static_cast<int>(std::size(kRadioSetups)); ++radio)
        configureRadio(radio, code);
    return announceCountry(name, code);
}

int resetCountry()
{
    char region[2] = {};
    if (biosGetRegCode(region[0]) != 0) {
        cli_print("Can NOT get any region code from bios.\n");
        return 0;
    }
    return changeCountry(kstr_regdmn_get_default_country(region));
}

} // namespace

int countryCommand(int argc, char** argv)
{
    if (argc == 1)
        return resetCountry();
    if (argc == 2)
        return changeCountry(argv[1]);
    cli_print("Set the country code, CMD format:\ncountry [%2S] (US/CN/UK/JP/...)\n");
    return 0;
}
