// Hand-built replies of the daemon, byte by byte.

#ifndef TESTS_DIAG_RECORD_H
#define TESTS_DIAG_RECORD_H

#include <algorithm>
#include <arpa/inet.h>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/daemon_records.h"
#include "tests/support/device.h"

/// Bytes of a reply, at the offsets that the daemon uses. What is not set is zero.
class Record
{
public:
    explicit Record(std::size_t size) : bytes_(size) {}

    Record& u8(std::size_t offset, unsigned value) { return put(offset, static_cast<std::uint8_t>(value)); }
    Record& u16(std::size_t offset, unsigned value) { return put(offset, static_cast<std::uint16_t>(value)); }
    Record& u32(std::size_t offset, std::uint32_t value) { return put(offset, value); }
    Record& text(std::size_t offset, std::string_view value)
    {
        std::memcpy(&bytes_.at(offset + value.size() - 1) + 1 - value.size(), value.data(), value.size());
        return *this;
    }
    Record& mac(std::size_t offset, std::uint64_t address)
    {
        for (std::size_t i = 0; i < 6; ++i)
            u8(offset + i, static_cast<unsigned>(address >> (40 - 8 * i)));
        return *this;
    }
    /// Marks `count` channels: n in bit n mod 8 of byte n div 8.
    Record& channels(std::size_t offset, unsigned first, unsigned count, unsigned step = 1)
    {
        for (unsigned n = first; count > 0; --count, n += step)
            bytes_.at(offset + n / 8) |= static_cast<std::uint8_t>(1U << n % 8);
        return *this;
    }

    [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

private:
    template <typename Value>
    Record& put(std::size_t offset, Value value)
    {
        std::memcpy(&bytes_.at(offset + sizeof value - 1) + 1 - sizeof value, &value, sizeof value);
        return *this;
    }

    std::vector<std::uint8_t> bytes_;
};

/// A counted list of these records.
inline std::vector<std::uint8_t> listOf(std::uint32_t count, const std::vector<Record>& records)
{
    std::vector<std::uint8_t> reply = Record(4).u32(0, htonl(count)).bytes();
    for (const Record& record : records)
        reply.insert(reply.end(), record.bytes().begin(), record.bytes().end());
    return reply;
}

using ShowReply = void (*)(std::span<const std::uint8_t> reply);

/// Shows a reply that ends where its memory does.
inline void showReply(ShowReply show, std::span<const std::uint8_t> reply)
{
    const auto copy = std::make_unique<std::uint8_t[]>(reply.size());
    std::copy(reply.begin(), reply.end(), copy.get());
    show({copy.get(), reply.size()});
}

/// The screen that the printer makes of a reply.
inline std::string screenOf(ShowReply show, std::span<const std::uint8_t> reply)
{
    return outputOf([&] { showReply(show, reply); });
}

/// `screen` with one piece of it replaced, which must be there.
inline std::string changed(std::string screen, const std::string& from, const std::string& to)
{
    const std::size_t at = screen.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? screen : screen.replace(at, from.size(), to);
}

/// One change to a record, and what it changes on the screen.
struct Variant {
    std::function<void(Record&)> set;
    std::string from;
    std::string to;
};

/// A record, and the screen that shows it.
struct Display {
    std::string (*show)(const Record&);
    Record record;
    std::string screen;

    void expectVariants(const std::vector<Variant>& variants) const
    {
        for (const Variant& variant : variants) {
            Record copy = record;
            variant.set(copy);
            EXPECT_EQ(show(copy), changed(screen, variant.from, variant.to));
        }
    }
};

#endif
