// Small conversions of texts that fields, files and command words hold.

#ifndef BASE_TEXT_H
#define BASE_TEXT_H

#include <cstdint>
#include <span>

/// Copies `text` into `field`, cut to what fits beside the terminator; the rest of the field is zeroed, so that equal
/// texts are equal bytes.
void copyText(std::span<char> field, const char* text);

/// The same for a text that ends at its first zero or with the span.
void copyField(std::span<char> field, std::span<const char> text);

/// Whether a byte is a control byte: 0 to 31, or 127.
constexpr bool isControlByte(char c)
{
    return (static_cast<unsigned char>(c) < ' ') || c == '\x7f';
}

/// Replaces the control bytes of `text` by '?', so that a terminal can show it. Those of `kept` stay.
void maskControlBytes(char* text, const char* kept = "");

/// Whether `text` consists of the characters 0 to 9 only; an empty text does.
bool isDigits(const char* text);

/// The decimal number at the start of `text`, 0 without one; what a 32-bit int cannot hold becomes its nearest limit.
int numberFrom(const char* text);

/// The same for a word that may hold no number: false, and `number` is left alone, when it does not begin with one.
bool scanNumber(const char* text, int& number);

/// Value of a hexadecimal digit, -1 for any other character.
int hexValue(char c);

inline constexpr char kHexDigits[] = "0123456789abcdef";

/// Writes two lower-case hexadecimal digits and returns the place behind them.
constexpr char* putHex(char* out, std::uint8_t byte)
{
    *out++ = kHexDigits[byte >> 4];
    *out++ = kHexDigits[byte & 0xf];
    return out;
}

/// Adds " %s" to a text of `length` characters, cut to the buffer; the first word stands behind a blank, too. Returns
/// the new length.
std::size_t appendWord(std::span<char> buffer, std::size_t length, const char* word);

#endif
