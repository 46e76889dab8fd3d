// The regulatory domains that the simulated device knows.

#ifndef PLATFORM_SIMULATION_REGULATORY_TABLE_H
#define PLATFORM_SIMULATION_REGULATORY_TABLE_H

struct RegulatoryCountry {
    char code[3];
    int number; ///< ISO 3166, where the country has one
};

/// Null: unknown.
const RegulatoryCountry* simCountryByCode(const char* code);

/// Null: unknown.
const RegulatoryCountry* simCountryByNumber(int number);

/// Two letters of the country that a region code, one letter, stands for; null: none.
const char* simDefaultCountry(const char* regionCode);

#endif
