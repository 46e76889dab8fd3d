// Names of codes for the displays.

#ifndef DIAG_VALUE_NAMES_H
#define DIAG_VALUE_NAMES_H

#include <cstddef>

/// The name at position `code`, or `otherwise` if the table is shorter.
template <std::size_t Count>
constexpr const char* nameOf(const char* const (&names)[Count], std::size_t code, const char* otherwise)
{
    return code < Count ? names[code] : otherwise;
}

constexpr const char* enabledWord(bool on)
{
    return on ? "enabled" : "disabled";
}

#endif
