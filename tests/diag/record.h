// Replies of the daemon for tests. Records are packed, so only fields of single bytes may be passed by reference.

#ifndef TESTS_DIAG_RECORD_H
#define TESTS_DIAG_RECORD_H

#include <algorithm>
#include <arpa/inet.h>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/daemon_records.h"
#include "tests/support/device.h"

/// Sets a text. The bytes after it in the field are not changed.
template <typename Byte, std::size_t N>
void set(Byte (&field)[N], std::string_view text)
{
    std::memcpy(field, text.data(), std::min(text.size(), N));
}

inline void setMac(std::uint8_t (&field)[6], std::uint64_t address)
{
    for (int i = 0; i < 6; ++i)
        field[i] = static_cast<std::uint8_t>(address >> (40 - 8 * i));
}

/// Marks `count` channels: n in bit n mod 8 of byte n div 8.
inline void mark(ChannelMap& map, unsigned first, unsigned count, unsigned step = 1)
{
    for (unsigned n = first; count > 0; --count, n += step)
        map[n / 8] |= static_cast<std::uint8_t>(1U << n % 8);
}

/// A copy of the record with a change.
template <typename Record, typename Change>
Record with(Record record, Change change)
{
    change(record);
    return record;
}

/// Appends the records to a reply.
template <typename Record>
std::vector<std::uint8_t> bytesOf(const std::vector<Record>& records, std::vector<std::uint8_t> bytes = {})
{
    const auto* begin = reinterpret_cast<const std::uint8_t*>(records.data());
    bytes.insert(bytes.end(), begin, begin + records.size() * sizeof(Record));
    return bytes;
}

/// A reply with a count and these records.
template <typename Record>
std::vector<std::uint8_t> listOf(std::uint32_t count, const std::vector<Record>& records)
{
    return bytesOf(records, bytesOf(std::vector{htonl(count)}));
}

using ShowReply = void (*)(std::span<const std::uint8_t> reply);

/// The output of a printer for a reply. The memory of the reply ends with its last byte, so that a read past the end is
/// detected.
inline std::string screenOf(ShowReply show, std::span<const std::uint8_t> reply)
{
    const auto copy = std::make_unique<std::uint8_t[]>(reply.size());
    std::copy(reply.begin(), reply.end(), copy.get());
    return outputOf([&] { show({copy.get(), reply.size()}); });
}

/// `screen` with one text replaced. Fails the test if it does not contain the text.
inline std::string changed(std::string screen, const std::string& from, const std::string& to)
{
    const std::size_t at = screen.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? screen : screen.replace(at, from.size(), to);
}

/// A change to a record, and the text on the screen that changes with it.
template <typename Record>
struct Variant {
    void (*change)(Record&);
    std::string from;
    std::string to;
};

/// A record, and its display.
template <typename Record>
struct Display {
    std::string (*show)(const Record&);
    Record record;
    std::string screen;

    void expectVariants(const std::vector<Variant<Record>>& variants) const
    {
        for (const Variant<Record>& variant : variants)
            EXPECT_EQ(show(with(record, variant.change)), changed(screen, variant.from, variant.to));
    }
};

#endif
