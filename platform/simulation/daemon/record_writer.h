// Writing a record of a reply field by field.

#ifndef PLATFORM_SIMULATION_DAEMON_RECORD_WRITER_H
#define PLATFORM_SIMULATION_DAEMON_RECORD_WRITER_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

/// A reply, or a part of one.
using Bytes = std::vector<uint8_t>;

/// Writes the fields of one record at the end of a reply, zeros elsewhere. Numbers are in host byte order. A field that
/// is not inside the record ends the process.
class RecordWriter
{
public:
    RecordWriter(Bytes& reply, std::size_t size) : reply_(reply), begin_(reply.size()), size_(size)
    {
        reply.resize(begin_ + size);
    }

    void put8(std::size_t offset, unsigned value) { put(offset, static_cast<uint8_t>(value)); }
    void put16(std::size_t offset, unsigned value) { put(offset, static_cast<uint16_t>(value)); }
    void put32(std::size_t offset, uint32_t value) { put(offset, value); }

    void putBytes(std::size_t offset, std::span<const uint8_t> bytes)
    {
        std::memcpy(at(offset, bytes.size()), bytes.data(), bytes.size());
    }

    /// Cut so that a zero always ends it inside its `width`.
    void putText(std::size_t offset, std::size_t width, std::string_view text)
    {
        std::memcpy(at(offset, width), text.data(), std::min(text.size(), width - 1));
    }

    /// Sets bit `number` of a bitmap of `width` bytes, least significant bit first.
    void setBit(std::size_t offset, std::size_t width, unsigned number)
    {
        if (number / 8 >= width)
            std::abort();
        *at(offset + number / 8, 1) |= static_cast<uint8_t>(1U << (number % 8));
    }

private:
    template <typename Number>
    void put(std::size_t offset, Number value)
    {
        std::memcpy(at(offset, sizeof value), &value, sizeof value);
    }

    uint8_t* at(std::size_t offset, std::size_t width)
    {
        if (offset > size_ || width > size_ - offset)
            std::abort();
        return reply_.data() + begin_ + offset;
    }

    Bytes& reply_;
    std::size_t begin_;
    std::size_t size_;
};

#endif
