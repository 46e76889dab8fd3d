// Text lines of a firewall rule table with hit counters: one rule, or a heading.

#ifndef DIAG_FIREWALL_RULE_H
#define DIAG_FIREWALL_RULE_H

#include <cstddef>
#include <cstdint>

/// Bits of a rule's `flags`.
inline constexpr std::uint8_t kRuleAllow = 0x01; ///< clear: deny
inline constexpr std::uint8_t kRuleDestinationAny = 0x04;
inline constexpr std::uint8_t kRuleDestinationLocal = 0x08;
inline constexpr std::uint8_t kRuleSourceAny = 0x10;
inline constexpr std::uint8_t kRuleSourceLocal = 0x20;
inline constexpr std::uint8_t kRuleMarked = 0x80;

/// The value of `protocol` in a rule for all protocols.
inline constexpr std::uint8_t kRuleAnyProtocol = 255;

/// A rule for IPv4, in host byte order. An address has its first octet in the most significant byte.
struct FirewallRule4 {
    std::uint16_t id;
    std::uint8_t flags;
    std::uint8_t protocol;
    std::uint32_t destination;
    std::uint32_t destinationMask;
    std::uint32_t source;
    std::uint32_t sourceMask;
    std::uint16_t destinationPort; ///< 0: any
    std::uint16_t sourcePort;      ///< 0: any
    std::int32_t hits;
};
static_assert(offsetof(FirewallRule4, flags) == 2);
static_assert(offsetof(FirewallRule4, protocol) == 3);
static_assert(offsetof(FirewallRule4, destination) == 4);
static_assert(offsetof(FirewallRule4, destinationMask) == 8);
static_assert(offsetof(FirewallRule4, source) == 12);
static_assert(offsetof(FirewallRule4, sourceMask) == 16);
static_assert(offsetof(FirewallRule4, destinationPort) == 20);
static_assert(offsetof(FirewallRule4, sourcePort) == 22);
static_assert(offsetof(FirewallRule4, hits) == 24);
static_assert(sizeof(FirewallRule4) == 28);

/// A rule for IPv6. Addresses are in network byte order, other fields in host byte order.
struct FirewallRule6 {
    std::uint16_t id;
    std::uint8_t flags;
    std::uint8_t protocol;
    std::uint8_t destination[16];
    std::uint8_t source[16];
    std::uint16_t destinationPort; ///< 0: any
    std::uint16_t sourcePort;      ///< 0: any
    std::uint8_t destinationPrefix;
    std::uint8_t sourcePrefix;
    std::uint8_t reserved[2];
    std::int32_t hits;
};
static_assert(offsetof(FirewallRule6, flags) == 2);
static_assert(offsetof(FirewallRule6, protocol) == 3);
static_assert(offsetof(FirewallRule6, destination) == 4);
static_assert(offsetof(FirewallRule6, source) == 20);
static_assert(offsetof(FirewallRule6, destinationPort) == 36);
static_assert(offsetof(FirewallRule6, sourcePort) == 38);
static_assert(offsetof(FirewallRule6, destinationPrefix) == 40);
static_assert(offsetof(FirewallRule6, sourcePrefix) == 41);
static_assert(offsetof(FirewallRule6, hits) == 44);
static_assert(sizeof(FirewallRule6) == 48);

/// Lines of a table that are not a rule.
inline constexpr int kRuleDoubleLine = 0;
inline constexpr int kRuleColumnLines = 1;
inline constexpr int kRuleSingleLine = 2;
inline constexpr int kRuleHeading4 = 4;
inline constexpr int kRuleHeading6 = 6;

/// Writes the line of `rule`, truncated to `size` - 1 characters. If `rule` is null, writes the line of the table that
/// `kind` names, one of the kRule... constants above. Writes nothing for an unknown kind. The last of the `size` bytes
/// is always set to zero. Returns `buffer`, which may be null.
char* firewallFormatRule4(const FirewallRule4* rule, int kind, char* buffer, std::size_t size);
char* firewallFormatRule6(const FirewallRule6* rule, int kind, char* buffer, std::size_t size);

#endif
