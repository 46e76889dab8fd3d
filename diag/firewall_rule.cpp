#include "diag/firewall_rule.h"

#include <bit>
#include <cstdio>

namespace
{

constexpr char kDoubleLine[] = "==============================================================================="; // 79
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

/// A number, or "any" for the value that stands for all.
struct NumberText {
    char text[12];

    NumberText(unsigned value, unsigned any) { std::snprintf(text, sizeof text, value == any ? "any" : "%u", value); }
};

/// The bits of a rule's flags that speak of one of its ends.
struct EndpointBits {
    std::uint8_t any;
    std::uint8_t local;
};
constexpr EndpointBits kSourceBits{kRuleSourceAny, kRuleSourceLocal};
constexpr EndpointBits kDestinationBits{kRuleDestinationAny, kRuleDestinationLocal};

/// "(L)2001:db8::1/64.65535" and the like.
struct EndpointText {
    char text[64];
};

/// "2001:db8:0:0:1::1" and the like.
struct AddressText {
    char text[kGroupCount * 5];
};

struct ZeroRun {
    int first;
    int length;
};

/// The longest run of zero groups, the last of several.
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

AddressText address6(const std::uint8_t (&bytes)[16])
{
    unsigned groups[kGroupCount];
    for (std::size_t i = 0; i < kGroupCount; ++i)
        groups[i] = static_cast<unsigned>(bytes[2 * i] << 8 | bytes[2 * i + 1]);

    const ZeroRun run = longestZeroRun(groups);
    AddressText address{};
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

const char* localMark(std::uint8_t flags, EndpointBits bits)
{
    return (flags & bits.local) != 0 ? "(L)" : "";
}

EndpointText endpoint4(std::uint8_t flags, EndpointBits bits, std::uint32_t address, std::uint32_t mask,
                       std::uint16_t port)
{
    const NumberText portText(port, 0);
    EndpointText endpoint;
    if ((flags & bits.any) != 0)
        std::snprintf(endpoint.text, sizeof endpoint.text, "any:%s", portText.text);
    else
        std::snprintf(endpoint.text, sizeof endpoint.text, "%s%u.%u.%u.%u/%d:%s", localMark(flags, bits), address >> 24,
                      address >> 16 & 0xff, address >> 8 & 0xff, address & 0xff, std::popcount(mask), portText.text);
    return endpoint;
}

EndpointText endpoint6(std::uint8_t flags, EndpointBits bits, const std::uint8_t (&address)[16], std::uint8_t prefix,
                       std::uint16_t port)
{
    const NumberText portText(port, 0);
    EndpointText endpoint;
    if ((flags & bits.any) != 0)
        std::snprintf(endpoint.text, sizeof endpoint.text, "any.%s", portText.text);
    else
        std::snprintf(endpoint.text, sizeof endpoint.text, "%s%s/%d.%s", localMark(flags, bits), address6(address).text,
                      prefix, portText.text);
    return endpoint;
}

void formatLine(int kind, char* buffer, std::size_t size)
{
    for (const auto& line : kLines)
        if (line.kind == kind)
            std::snprintf(buffer, size, "%s", line.text);
}

/// The part that the rules of both families share.
template <typename Rule>
void formatRule(const Rule& rule, const EndpointText& source, const EndpointText& destination, char* buffer,
                std::size_t size)
{
    const NumberText protocol(rule.protocol, kRuleAnyProtocol);
    std::snprintf(buffer, size, " %s%5d %10d %-6s %-4s %s ==> %s", (rule.flags & kRuleMarked) != 0 ? "D" : " ", rule.id,
                  rule.hits, (rule.flags & kRuleAllow) != 0 ? "allow" : "deny", protocol.text, source.text,
                  destination.text);
}

} // namespace

char* firewallFormatRule4(const FirewallRule4* rule, int kind, char* buffer, std::size_t size)
{
    if (buffer == nullptr || size == 0)
        return buffer;
    if (rule == nullptr)
        formatLine(kind, buffer, size);
    else
        formatRule(
            *rule, endpoint4(rule->flags, kSourceBits, rule->source, rule->sourceMask, rule->sourcePort),
            endpoint4(rule->flags, kDestinationBits, rule->destination, rule->destinationMask, rule->destinationPort),
            buffer, size);
    buffer[size - 1] = '\0';
    return buffer;
}

char* firewallFormatRule6(const FirewallRule6* rule, int kind, char* buffer, std::size_t size)
{
    if (buffer == nullptr || size == 0)
        return buffer;
    if (rule == nullptr)
        formatLine(kind, buffer, size);
    else
        formatRule(
            *rule, endpoint6(rule->flags, kSourceBits, rule->source, rule->sourcePrefix, rule->sourcePort),
            endpoint6(rule->flags, kDestinationBits, rule->destination, rule->destinationPrefix, rule->destinationPort),
            buffer, size);
    buffer[size - 1] = '\0';
    return buffer;
}
