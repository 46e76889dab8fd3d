// Addresses as text.

#ifndef BASE_ADDRESS_H
#define BASE_ADDRESS_H

#include <cstdint>

/// The text of one address, terminated.
struct AddressText {
    char text[18];
};

/// Six pairs of lower-case hexadecimal digits, separated by colons.
AddressText macText(const std::uint8_t (&address)[6]);

/// Dotted decimal of an address in host byte order.
AddressText ipv4Text(std::uint32_t address);

/// Parses an address into host byte order, in every form that inet_aton() accepts. The address ends at the first blank.
/// Returns false and stores nothing if the text is not an address.
bool parseIpv4(const char* text, std::uint32_t* address);

#endif
