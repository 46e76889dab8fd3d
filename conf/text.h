// Small conversions that the configuration keys share.

#ifndef CONF_TEXT_H
#define CONF_TEXT_H

#include <span>

/// Copies `text` into `field`, cut to what fits beside the terminator; the rest of the field is zeroed, so that equal
/// texts are equal bytes.
void copyText(std::span<char> field, const char* text);

/// Whether `text` consists of the characters 0 to 9 only; an empty text does.
bool isDigits(const char* text);

/// The decimal number at the start of `text`, 0 without one; what a 32-bit int cannot hold becomes its nearest limit.
int numberFrom(const char* text);

#endif
