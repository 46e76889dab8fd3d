#include "diag/reply.h"

#include <arpa/inet.h>

ReplyList replyList(std::span<const std::uint8_t> reply, std::size_t recordLength)
{
    const auto countWord = recordAt<std::uint32_t>(reply, 0);
    const std::uint32_t count = ntohl(countWord);
    // The list is printed only if the count word is positive before it is converted to host byte order. So on a
    // little-endian device, a count whose low byte is 128 or more prints nothing. This is kept.
    if (static_cast<std::int32_t>(countWord) <= 0 || reply.size() <= ReplyList::kHeadLength)
        return {count, 0};
    const std::size_t begun = (reply.size() - ReplyList::kHeadLength + recordLength - 1) / recordLength;
    return {count, static_cast<std::uint32_t>(std::min<std::size_t>(count, begun))};
}
