#include "diag/radio_commands.h"

#include <cstring>
#include <span>

#include "base/text.h"
#include "diag/radio_power.h"
#include "shell/output.h"

namespace
{

struct CalibrationTarget {
    const char* rate;
    int dbm;
};

constexpr CalibrationTarget kTargets24GHz[] = {
    {"CCK-11M", 20},
    {"OFDM-54M", 17},
    {"HT20-MCS7", 17},
    {"HT40-MCS7", 17},
};

constexpr CalibrationTarget kTargets5GHz[] = {
    {"OFDM-54M", 18}, {"HT20-MCS7", 18}, {"HT40-MCS7", 18}, {"VHT20-MCS8", 18}, {"VHT40-MCS9", 18}, {"VHT80-MCS9", 18},
};

void printTargets(std::span<const CalibrationTarget> targets)
{
    for (const CalibrationTarget& target : targets)
        cli_printf("  %-10s = %d dBm\n", target.rate, target.dbm);
}

} // namespace

int txpowerCommand(int argc, char** argv)
{
    if (argc != 3) {
        cli_print("Set the TX power of radio, CMD format:\ntxpower {0|1} %d[%]\n");
        return 0;
    }
    int radio = 0;
    int power = 0;
    if (!scanNumber(argv[1], radio) || !scanNumber(argv[2], power))
        return 0;
    return setRadioPower(radio, power, std::strchr(argv[2], '%') != nullptr);
}

int calibrationCommand(int, char**)
{
    cli_print("wlan0(2.4GHz):\n");
    printTargets(kTargets24GHz);
    cli_print("wlan1(5GHz):\n");
    printTargets(kTargets5GHz);
    return 0;
}
