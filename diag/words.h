// Codes and addresses as the displays show them.

#ifndef DIAG_WORDS_H
#define DIAG_WORDS_H

#include <cstddef>
#include <cstdint>

/// The name at position `code`, `otherwise` beyond the last.
template <std::size_t Count>
constexpr const char* nameOf(const char* const (&names)[Count], std::size_t code, const char* otherwise)
{
    return code < Count ? names[code] : otherwise;
}

constexpr const char* enabledWord(bool on)
{
    return on ? "enabled" : "disabled";
}

struct AddressText {
    char text[18];
};

/// Six pairs of lower-case hexadecimal digits, separated by colons.
AddressText macText(const std::uint8_t (&address)[6]);

/// Dotted decimal; the first octet is the most significant byte.
AddressText ipv4Text(std::uint32_t address);

/// Writes two lower-case hexadecimal digits and returns the place behind them.
char* putHex(char* out, std::uint8_t byte);

#endif
