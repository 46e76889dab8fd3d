#include "conf/text.h"

#include <climits>
#include <cstdlib>
#include <cstring>

void copyText(std::span<char> field, const char* text)
{
    const std::size_t length = strnlen(text, field.size() - 1);
    std::memmove(field.data(), text, length);
    std::memset(field.data() + length, 0, field.size() - length);
}

bool isDigits(const char* text)
{
    return text[std::strspn(text, "0123456789")] == '\0';
}

int numberFrom(const char* text)
{
    const long number = std::strtol(text, nullptr, 10);
    if (number > INT_MAX)
        return INT_MAX;
    if (number < INT_MIN)
        return INT_MIN;
    return static_cast<int>(number);
}
