// Numbers typed as command words.

#ifndef DIAG_NUMBER_H
#define DIAG_NUMBER_H

#include <climits>
#include <cstdlib>

/// The decimal number at the beginning of `text`, whatever follows it; one that does not fit saturates. False, and
/// `number` is left alone, when there is none.
inline bool scanNumber(const char* text, int& number)
{
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    if (end == text)
        return false;
    number = value < INT_MIN ? INT_MIN : value > INT_MAX ? INT_MAX : static_cast<int>(value);
    return true;
}

#endif
