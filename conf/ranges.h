// The closed ranges and the defaults of the checked numbers. A help text that names another range or default does not
// compile.

#ifndef CONF_RANGES_H
#define CONF_RANGES_H

#include <cstddef>
#include <iterator>
#include <string_view>

struct Range {
    std::string_view key; ///< key of the item
    int low;
    int high;
    int initial; ///< default
};

inline constexpr Range kRanges[] = {
    {"ac-ctl-port", 1024, 49150, 5246}, {"admin-timeout", 1, 480, 5},          {"allow-dflt-https", 0, 2, 0},
    {"allow-dflt-ssh", 0, 2, 0},        {"ap-mgmt-vlanid", 0, 4094, 0},        {"data-channel-keepalive", 10, 30, 30},
    {"dhcp-code", 128, 254, 138},       {"echo-interval", 10, 60, 30},         {"idle-timeout", 20, 3600, 300},
    {"max-discoveries", 3, 10, 3},      {"max-discovery-interval", 5, 180, 5}, {"max-failed-dtls-sess-retry", 1, 3, 3},
    {"max-retransmit", 3, 5, 3},        {"multicast-ttl", 1, 255, 1},          {"plain-ctl", 0, 1, 0},
    {"report-interval", 30, 120, 30},   {"statistics-timer", 60, 120, 120},    {"wtp-ctl-port", 1024, 49150, 5246},
};

/// The index of an item's range in the table; the size of the table if the item has no range.
constexpr std::size_t findRange(std::string_view key)
{
    std::size_t i = 0;
    while (i < std::size(kRanges) && kRanges[i].key != key)
        ++i;
    return i;
}

/// The range of an item. A key without a range does not compile.
consteval Range rangeOf(std::string_view key)
{
    return kRanges[findRange(key)];
}

/// Reads the number that `text` begins with.
constexpr int leadingNumber(std::string_view text)
{
    int number = 0;
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; text.remove_prefix(1))
        number = number * 10 + (text.front() - '0');
    return number;
}

/// Whether a help text agrees with the range ("5 - 180") and the default ("default = 5") of an item. Always true for an
/// item without a range.
constexpr bool agreesWithRange(std::string_view help, std::string_view key)
{
    constexpr std::string_view kDash = " - ";
    constexpr std::string_view kDefault = "default = ";
    const std::size_t place = findRange(key);
    if (place == std::size(kRanges))
        return true;
    const Range& range = kRanges[place];
    const std::size_t initial = help.find(kDefault);
    if (initial != std::string_view::npos && leadingNumber(help.substr(initial + kDefault.size())) != range.initial)
        return false;
    const std::size_t dash = help.find(kDash);
    const std::size_t low = help.find_last_not_of("0123456789", dash - 1) + 1;
    return dash == std::string_view::npos || (leadingNumber(help.substr(low)) == range.low &&
                                              leadingNumber(help.substr(dash + kDash.size())) == range.high);
}

#endif
