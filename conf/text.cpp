#include "conf/text.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

namespace
{

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

void copyText(std::span<char> field, const char* text)
{
    std::strncpy(field.data(), text, field.size() - 1);
    field.back() = '\0';
}

bool isDigits(const char* text)
{
    while (isDigit(*text))
        ++text;
    return *text == '\0';
}

// Not strtol: a long may be no wider than the result, and a file of numbers is read at every start.
int numberFrom(const char* text)
{
    constexpr std::int64_t kLowest = INT_MIN;
    constexpr std::int64_t kHighest = INT_MAX;
    while (isBlank(*text))
        ++text;
    const bool isNegative = *text == '-';
    if (isNegative || *text == '+')
        ++text;
    std::int64_t number = 0;
    for (; isDigit(*text) && number <= kHighest; ++text)
        number = number * 10 + (*text - '0');
    return static_cast<int>(std::clamp(isNegative ? -number : number, kLowest, kHighest));
}
