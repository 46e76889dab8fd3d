// Records of a reply. Bytes that were not received read as zero.

#ifndef DIAG_REPLY_H
#define DIAG_REPLY_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// A copy of the record that begins at `offset`.
template <typename Record>
Record recordAt(std::span<const std::uint8_t> reply, std::size_t offset)
{
    Record record{};
    if (offset < reply.size())
        std::memcpy(&record, reply.data() + offset, std::min(sizeof record, reply.size() - offset));
    return record;
}

/// Head of a reply that counts its records. The records follow the count word back to back.
struct ReplyList {
    static constexpr std::size_t kHeadLength = 4;

    std::uint32_t count;  ///< the daemon's count, in host byte order
    std::uint32_t listed; ///< number of records to print: those of which at least one byte was received
};

ReplyList replyList(std::span<const std::uint8_t> reply, std::size_t recordLength);

#endif
