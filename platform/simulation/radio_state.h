// The radios of the simulated device: their settings, and what follows from these by the states "bands" and
// "channels/<country>".

#ifndef PLATFORM_SIMULATION_RADIO_STATE_H
#define PLATFORM_SIMULATION_RADIO_STATE_H

#include "platform/daemon_records.h"
#include "platform/simulation/regulatory_table.h"

struct SimRadio {
    char mode[16];    ///< empty: the setting "band" means none
    int maximumPower; ///< dBm, calibrated
    RadioRecord record;
};

/// The radio that an interface, its own or a VAP's, belongs to.
SimRadio simRadio(const char* interface);

/// Whether the setting "band" of a radio can have this value.
bool simIsBand(int band);

/// Moves a radio to a channel that the country allows, if need be. False: no such interface, or it cannot be written.
bool simSetCountry(const char* radio, const RegulatoryCountry& country);

#endif
