// The countries that the shell knows by name.

#ifndef DIAG_COUNTRY_TABLE_H
#define DIAG_COUNTRY_TABLE_H

#include <cstddef>

struct Country {
    char code[3];  ///< two letters, terminated
    char name[32]; ///< in place, so that the table needs no relocation
};

inline constexpr std::size_t kCountryCount = 191;

/// Rows at the beginning of the table that stand for no country and are never listed.
inline constexpr std::size_t kSpecialCountryCount = 2;

/// In the order in which they are listed.
extern const Country kCountryTable[kCountryCount];

#endif
