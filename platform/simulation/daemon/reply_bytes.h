// The bytes of a reply, composed from records.

#ifndef PLATFORM_SIMULATION_DAEMON_REPLY_BYTES_H
#define PLATFORM_SIMULATION_DAEMON_REPLY_BYTES_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/daemon_records.h"

using Bytes = std::vector<uint8_t>;

template <typename Record>
void append(Bytes& reply, const Record& record)
{
    const std::size_t place = reply.size();
    reply.resize(place + sizeof record);
    std::memcpy(&reply[place], &record, sizeof record);
}

/// Copies a text into a field that holds only zeros. Truncates the text so that at least one zero remains at the end of
/// the field.
template <std::size_t Size>
void fillText(char (&field)[Size], std::string_view text)
{
    std::memcpy(field, text.data(), std::min(text.size(), Size - 1));
}

#endif
