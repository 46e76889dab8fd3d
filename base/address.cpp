#include "base/address.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstring>

#include "base/text.h"

AddressText macText(const std::uint8_t (&address)[6])
{
    AddressText result{};
    char* out = result.text;
    for (const std::uint8_t byte : address) {
        if (out != result.text)
            *out++ = ':';
        out = putHex(out, byte);
    }
    return result;
}

AddressText ipv4Text(std::uint32_t address)
{
    AddressText result{};
    std::snprintf(result.text, sizeof result.text, "%u.%u.%u.%u", address >> 24, address >> 16 & 0xff,
                  address >> 8 & 0xff, address & 0xff);
    return result;
}

// C libraries disagree about which characters may follow an address. So inet_aton() gets only the text before the first
// blank.
bool parseIpv4(const char* text, std::uint32_t* address)
{
    char head[256];
    const std::size_t length = std::strcspn(text, " \t\r\n\v\f");
    if (length >= sizeof head)
        return false;
    std::memcpy(head, text, length);
    head[length] = '\0';
    in_addr parsed;
    if (inet_aton(head, &parsed) == 0)
        return false;
    *address = ntohl(parsed.s_addr);
    return true;
}
