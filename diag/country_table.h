// The countries that the shell knows by name.

#ifndef DIAG_COUNTRY_TABLE_H
#define DIAG_COUNTRY_TABLE_H

#include <span>

struct CountryName {
    char code[3]; ///< two letters
    const char* name;
};

/// In the order in which they are listed.
extern const std::span<const CountryName> countryNames;

#endif
