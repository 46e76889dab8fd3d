#include "diag/firewall_rule.h"

#include <bit>
#include <cstdio>

#include "base/address.h"

namespace
{

// Each line has 79 characters.
constexpr char kDoubleLine[] = "===============================================================================";
constexpr char kSingleLine[] = "-------------------------------------------------------------------------------";
constexpr char kColumnLines[] = "------- ---------- ------ ---- ------------------------------------------------";
static_assert(sizeof kDoubleLine == 80 && sizeof kSingleLine == 80 && sizeof kColumnLines == 80);

constexpr struct {
    int kind;
    const char* text;
} kLines[] = {
    {kRuleDoubleLine, kDoubleLine},
    {kRuleColumnLines, kColumnLines},
    {kRuleSingleLine, kSingleLine},
    {kRuleHeading4, " RuleID HitCounter Policy Prot (IPv4)Source ==> Destination"},
    {kRuleHeading6, " RuleID HitCounter Policy Prot (IPv6)Source ==> Destination"},
};

constexpr int kGroupCount = 8;

/// A number as text, or "any" if the number is equal to `any`.
struct NumberText {
    char text[12];

    NumberText(unsigned value, unsigned any) { std::snprintf(text, sizeof text, value == any ? "any" : "%u", value); }
};

/// The bits of a rule's flags that describe its source, or its destination.
struct EndpointBits {
    std::uint8_t any;
    std::uint8_t local;
};
constexpr EndpointBits kSourceBits{kRuleSourceAny, kRuleSourceLocal};
constexpr EndpointBits kDestinationBits{kRuleDestinationAny, kRuleDestinationLocal};

/// One end of an IPv4 rule as text, for example "(L)10.0.0.1/32:80" or "any.53".
struct EndpointText {
    char text[64];
};

/// An IPv6 address as text, for example "2001:db8:0:0:1::1".
struct Address6Text {
    char text[kGroupCount * 5];
};

struct ZeroRun {
    int first;
    int length;
};

/// Finds the longest run of zero groups; if several are equally long, the last one.
ZeroRun longestZeroRun(const unsigned (&groups)[kGroupCount])
{
    ZeroRun longest{0, 0};
    ZeroRun run{0, 0};
    for (int i = 0; i < kGroupCount; ++i) {
        run = groups[i] == 0 ? ZeroRun{run.first, run.length + 1} : ZeroRun{i + 1, 0};
        if (run.length >= longest.length)
            longest = run;
    }
    return longest;
}

Address6Text address6(const std::uint8_t (&bytes)[16])
{
    unsigned groups[kGroupCount];
    for (std::size_t i = 0; i < kGroupCount; ++i)
        groups[i] = static_cast<unsigned>(bytes[2 * i] << 8 | bytes[2 * i + 1]);

    const ZeroRun run = longestZeroRun(groups);
    Address6Text address{};
    int length = 0;
    for (int i = 0; i < kGroupCount; ++i) {
        char* end = address.text + length;
        const std::size_t room = sizeof address.text - static_cast<std::size_t>(length);
        if (run.length >= 2 && i == run.first) {
            // The group before the run has already written one of the two colons.
            length += std::snprintf(end, room, "%s", i == 0 ? "::" : ":");
            i += run.length - 1;
        } else {
            length += std::snprintf(end, room, i < kGroupCount - 1 ? "%x:" : "%x", groups[i]);
        }
    }
    return address;
}

EndpointText endpoint(std::uint8_t flags, EndpointBits bits, const char* address, int prefix, char separator,
                      std::uint16_t port)
{
    const NumberText portText(port, 0);
    EndpointText result;
    if ((flags & bits.any) != 0)
        std::snprintf(result.text, sizeof result.text, "any%c%s", separator, portText.text);
    else
        std::snprintf(result.text, sizeof result.text, "%s%s/%d%c%s", (flags & bits.local) != 0 ? "(L)" : "", address,
                      prefix, separator, portText.text);
    return result;
}

/// The fields that the rules of both address families share.
template <typename Rule>
void formatRule(const Rule& rule, const EndpointText& source, const EndpointText& destination, char* buffer,
                std::size_t size)
{
    const NumberText protocol(rule.protocol, kRuleAnyProtocol);
    std::snprintf(buffer, size, " %s%5d %10d %-6s %-4s %s ==> %s", (rule.flags & kRuleMarked) != 0 ? "D" : " ", rule.id,
                  rule.hits, (rule.flags & kRuleAllow) != 0 ? "allow" : "deny", protocol.text, source.text,
                  destination.text);
}

void formatRule(const FirewallRule4& rule, char* buffer, std::size_t size)
{
    formatRule(rule,
               endpoint(rule.flags, kSourceBits, ipv4Text(rule.source).text, std::popcount(rule.sourceMask), ':',
                        rule.sourcePort),
               endpoint(rule.flags, kDestinationBits, ipv4Text(rule.destination).text,
                        std::popcount(rule.destinationMask), ':', rule.destinationPort),
               buffer, size);
}

void formatRule(const FirewallRule6& rule, char* buffer, std::size_t size)
{
    formatRule(rule,
               endpoint(rule.flags, kSourceBits, address6(rule.source).text, rule.sourcePrefix, '.', rule.sourcePort),
               endpoint(rule.flags, kDestinationBits, address6(rule.destination).text, rule.destinationPrefix, '.',
                        rule.destinationPort),
               buffer, size);
}

void formatLine(int kind, char* buffer, std::size_t size)
{
    for (const auto& line : kLines)
        if (line.kind == kind)
            std::snprintf(buffer, size, "%s", line.text);
}

template <typename Rule>
char* format(const Rule* rule, int kind, char* buffer, std::size_t size)
{
    if (buffer == nullptr || size == 0)
        return buffer;
    if (rule != nullptr)
        formatRule(*rule, buffer, size);
    else
        formatLine(kind, buffer, size);
    buffer[size - 1] = '\0';
    return buffer;
}

} // namespace

char* firewallFormatRule4(const FirewallRule4* rule, int kind, char* buffer, std::size_t size)
{
    return format(rule, kind, buffer, size);
}

char* firewallFormatRule6(const FirewallRule6* rule, int kind, char* buffer, std::size_t size)
{
    return format(rule, kind, buffer, size);
}
