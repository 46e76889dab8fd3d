// The closed ranges of the numbers that are checked, each in one place. A help text that names a range is compared with
// it when it is compiled.

#ifndef CONF_RANGES_H
#define CONF_RANGES_H

#include <cstddef>
#include <iterator>
#include <string_view>

struct Range {
    std::string_view key; ///< of the item
    int low;
    int high;
};

inline constexpr Range kRanges[] = {
    {"ac-ctl-port", 1024, 49150}, {"admin-timeout", 1, 480},          {"allow-dflt-https", 0, 2},
    {"allow-dflt-ssh", 0, 2},     {"ap-mgmt-vlanid", 0, 4094},        {"data-channel-keepalive", 10, 30},
    {"dhcp-code", 128, 254},      {"echo-interval", 10, 60},          {"idle-timeout", 20, 3600},
    {"max-discoveries", 3, 10},   {"max-discovery-interval", 5, 180}, {"max-failed-dtls-sess-retry", 1, 3},
    {"max-retransmit", 3, 5},     {"multicast-ttl", 1, 255},          {"plain-ctl", 0, 1},
    {"report-interval", 30, 120}, {"statistics-timer", 60, 120},      {"wtp-ctl-port", 1024, 49150},
};

/// The place of an item's range in the table, which ends where there is none.
constexpr std::size_t findRange(std::string_view key)
{
    std::size_t i = 0;
    while (i < std::size(kRanges) && kRanges[i].key != key)
        ++i;
    return i;
}

/// The range of an item that has one; any other key does not compile.
consteval Range rangeOf(std::string_view key)
{
    return kRanges[findRange(key)];
}

/// Whether a help text names no other range ("5 - 180") than the item has. An item without a range may name any.
constexpr bool namesRange(std::string_view help, std::string_view key)
{
    constexpr std::string_view kDash = " - ";
    constexpr auto isDigit = [](char c) {
        return c >= '0' && c <= '9';
    };
    const std::size_t range = findRange(key);
    for (std::size_t dash = 1; range < std::size(kRanges) && dash + kDash.size() < help.size(); ++dash) {
        if (help.substr(dash, kDash.size()) != kDash)
            continue;
        std::size_t low = dash;
        while (low > 0 && isDigit(help[low - 1]))
            --low;
        std::size_t high = dash + kDash.size();
        int numbers[2]{};
        for (; low < dash; ++low)
            numbers[0] = numbers[0] * 10 + (help[low] - '0');
        for (; high < help.size() && isDigit(help[high]); ++high)
            numbers[1] = numbers[1] * 10 + (help[high] - '0');
        return numbers[0] == kRanges[range].low && numbers[1] == kRanges[range].high;
    }
    return true;
}

#endif
