// The radios of the simulated device. Their state is computed from their settings and the tables "bands" and
// "channels/<country>".

#ifndef PLATFORM_SIMULATION_RADIO_STATE_H
#define PLATFORM_SIMULATION_RADIO_STATE_H

#include "platform/daemon_records.h"
#include "platform/simulation/regulatory_table.h"

struct SimRadio {
    char mode[16];    ///< empty: the setting "band" is invalid
    int maximumPower; ///< dBm, calibrated
    RadioRecord record;
};

/// Returns the radio of an interface. The interface is that of a radio ("wlan0") or of a VAP on it.
SimRadio simRadio(const char* interface);

/// Whether the setting "band" of a radio can have this value.
bool simIsBand(int band);

/// Sets the country, and moves the radio to a channel of that country if needed. Returns false if there is no such
/// interface or its state cannot be written.
bool simSetCountry(const char* radio, const RegulatoryCountry& country);

#endif
