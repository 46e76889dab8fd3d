#include "diag/words.h"

#include <cstdio>

char* putHex(char* out, std::uint8_t byte)
{
    constexpr char kDigits[] = "0123456789abcdef";
    *out++ = kDigits[byte >> 4];
    *out++ = kDigits[byte & 0xf];
    return out;
}

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
