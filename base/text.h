// Conversions between texts and fields or numbers.

#ifndef BASE_TEXT_H
#define BASE_TEXT_H

#include <cstdint>
#include <span>

/// Copies `text` into `field`, truncated so that a terminator fits. Sets the rest of the field to zero, so fields with
/// equal texts have equal bytes.
void copyText(std::span<char> field, const char* text);

/// The same, but `text` ends at its first zero, or at the end of the span if it has no zero.
void copyField(std::span<char> field, std::span<const char> text);

/// Whether a byte is a control byte: 0 to 31, or 127.
constexpr bool isControlByte(char c)
{
    return (static_cast<unsigned char>(c) < ' ') || c == '\x7f';
}

/// Replaces the control bytes of `text` by '?', so that a terminal can show it. Does not replace the bytes in `kept`.
void maskControlBytes(char* text, const char* kept = "");

/// Whether `text` consists of the characters 0 to 9 only; an empty text does.
bool isDigits(const char* text);

/// The decimal number at the start of `text`, or 0 if there is none. A number that is too large or too small for a
/// 32-bit int becomes the largest or the smallest one.
int numberFrom(const char* text);

/// The same, but returns false and leaves `number` unchanged if `text` does not begin with a number.
bool scanNumber(const char* text, int& number);

/// Value of a hexadecimal digit, -1 for any other character.
int hexValue(char c);

inline constexpr char kHexDigits[] = "0123456789abcdef";

/// Writes two lower-case hexadecimal digits and returns a pointer to the character after them.
constexpr char* putHex(char* out, std::uint8_t byte)
{
    *out++ = kHexDigits[byte >> 4];
    *out++ = kHexDigits[byte & 0xf];
    return out;
}

/// Appends a blank and `word` to a text of `length` characters, truncated to the size of the buffer. Returns the new
/// length.
std::size_t appendWord(std::span<char> buffer, std::size_t length, const char* word);

#endif
