#include "base/text.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
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

/// Copies at most `limit` characters of a text, and zeros behind them.
void fill(std::span<char> field, const char* text, std::size_t limit)
{
    const std::size_t length = strnlen(text, limit);
    std::memcpy(field.data(), text, length);
    std::memset(field.data() + length, 0, field.size() - length);
}

} // namespace

void copyText(std::span<char> field, const char* text)
{
    fill(field, text, field.size() - 1);
}

void copyField(std::span<char> field, std::span<const char> text)
{
    fill(field, text.data(), std::min(text.size(), field.size() - 1));
}

void maskControlBytes(char* text, const char* kept)
{
    for (; *text != '\0'; ++text)
        if (isControlByte(*text) && std::strchr(kept, *text) == nullptr)
            *text = '?';
}

bool isDigits(const char* text)
{
    while (isDigit(*text))
        ++text;
    return *text == '\0';
}

int numberFrom(const char* text)
{
    int number = 0;
    scanNumber(text, number);
    return number;
}

// Not strtol: a long may be no wider than the result, and a file of numbers is read at every start.
bool scanNumber(const char* text, int& number)
{
    constexpr std::int64_t kLowest = INT_MIN;
    constexpr std::int64_t kHighest = INT_MAX;
    while (isBlank(*text))
        ++text;
    const bool isNegative = *text == '-';
    if (isNegative || *text == '+')
        ++text;
    if (!isDigit(*text))
        return false;
    std::int64_t value = 0;
    for (; isDigit(*text) && value <= kHighest; ++text)
        value = value * 10 + (*text - '0');
    number = static_cast<int>(std::clamp(isNegative ? -value : value, kLowest, kHighest));
    return true;
}

std::size_t appendWord(std::span<char> buffer, std::size_t length, const char* word)
{
    const int wanted = std::snprintf(&buffer[length], buffer.size() - length, " %s", word);
    const std::size_t room = buffer.size() - length - 1;
    return length + std::min(static_cast<std::size_t>(wanted), room);
}

int hexValue(char c)
{
    if (isDigit(c))
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}
