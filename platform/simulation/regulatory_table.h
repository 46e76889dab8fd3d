// The regulatory domains that the simulated device knows.

#ifndef PLATFORM_SIMULATION_REGULATORY_TABLE_H
#define PLATFORM_SIMULATION_REGULATORY_TABLE_H

struct RegulatoryCountry {
    char code[3];
    int number; ///< numeric code of ISO 3166, if the country has one there
};

/// Null: unknown.
const RegulatoryCountry* simCountryByCode(const char* code);

/// Null: unknown.
const RegulatoryCountry* simCountryByNumber(int number);

/// Returns the two-letter code of the default country of a region. A region code is one letter. Returns null if the
/// region is unknown.
const char* simDefaultCountry(const char* regionCode);

#endif
