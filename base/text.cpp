#include "base/text.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Copies at most `limit` characters of a text and sets the rest of the field to zero.
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

bool scanNumber(const char* text, int& number)
{
    char* end;
    const long long value = std::strtoll(text, &end, 10);
    if (end == text)
        return false;
    number = static_cast<int>(std::clamp<long long>(value, INT_MIN, INT_MAX));
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
