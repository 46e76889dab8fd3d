#include "diag/firewall_rule.h"

#include <array>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace
{

using Groups = std::array<unsigned, 8>;

void setAddress(std::uint8_t (&address)[16], const Groups& groups)
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        address[2 * i] = static_cast<std::uint8_t>(groups[i] >> 8);
        address[2 * i + 1] = static_cast<std::uint8_t>(groups[i]);
    }
}

template <typename Rule>
std::string lineOf(char* (*format)(const Rule*, int, char*, std::size_t), const Rule* rule, int kind = 0)
{
    char line[256];
    std::memset(line, '#', sizeof line);
    EXPECT_EQ(format(rule, kind, line, sizeof line), line);
    EXPECT_EQ(line[sizeof line - 1], '\0');
    return line;
}

} // namespace

TEST(FirewallRule, FormatsRulesForIpv4)
{
    const struct {
        FirewallRule4 rule;
        const char* line;
    } kCases[] = {
        {{7, kRuleAllow, 6, 0x0a000001, 0xff00ff01, 0xc0a80100, 0xffffff00, 443, 0, 12},
         "      7         12 allow  6    192.168.1.0/24:any ==> 10.0.0.1/17:443"},
        {{65535, kRuleMarked | kRuleSourceLocal | kRuleDestinationLocal, 254, 0xffffffff, 0xffffffff, 0, 0, 65535,
          65535, -2147483647 - 1},
         " D65535 -2147483648 deny   254  (L)0.0.0.0/0:65535 ==> (L)255.255.255.255/32:65535"},
        // An end that is any says nothing of being local.
        {{1, kRuleAllow | kRuleSourceAny | kRuleSourceLocal, kRuleAnyProtocol, 1, 1, 1, 1, 1, 53, 0},
         "      1          0 allow  any  any:53 ==> 0.0.0.1/1:1"},
        {{1, kRuleDestinationAny | kRuleDestinationLocal, 0, 1, 1, 1, 1, 0, 0, 0},
         "      1          0 deny   0    0.0.0.1/1:any ==> any:any"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(lineOf(firewallFormatRule4, &test.rule), test.line);
}

TEST(FirewallRule, FormatsRulesForIpv6)
{
    FirewallRule6 rule{10, kRuleAllow | kRuleMarked | kRuleSourceLocal, 58, {}, {}, 0, 1024, 128, 64, {}, 123456};
    setAddress(rule.source, {0xfe80, 0, 0, 0, 0x211, 0x22ff, 0xfe33, 0x4455});
    setAddress(rule.destination, {0x2001, 0xdb8, 0, 0, 1, 0, 0, 1});
    EXPECT_EQ(lineOf(firewallFormatRule6, &rule),
              " D   10     123456 allow  58   (L)fe80::211:22ff:fe33:4455/64.1024 ==> 2001:db8:0:0:1::1/128.any");

    // The last of the longest runs of zeros is left out.
    const std::pair<Groups, std::string> addresses[] = {
        {{0, 0, 0, 0, 0, 0, 0, 0}, "::"},
        {{1, 0, 0, 0, 0, 0, 0, 0}, "1::"},
        {{0, 0, 0, 0, 0, 0xffff, 0x102, 0x304}, "::ffff:102:304"},
        {{0x1000, 0x200, 0x30, 0x4, 0, 0xab, 0xcd, 0xef}, "1000:200:30:4:0:ab:cd:ef"},
        {{0, 0, 1, 0, 0, 1, 0, 0}, "0:0:1:0:0:1::"},
        {{0, 0, 0, 1, 0, 0, 1, 1}, "::1:0:0:1:1"},
        {{0, 0, 1, 0, 0, 0, 1, 0}, "0:0:1::1:0"},
        {{0xffff, 0xffff, 0xffff, 0xffff, 0xffff, 0xffff, 0xffff, 0xffff}, "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
    };
    for (const auto& [groups, text] : addresses) {
        rule = {1, kRuleSourceAny | kRuleDestinationLocal, kRuleAnyProtocol, {}, {}, 65535, 1024, 255, 64, {}, -1};
        setAddress(rule.destination, groups);
        EXPECT_EQ(lineOf(firewallFormatRule6, &rule),
                  "      1         -1 deny   any  any.1024 ==> (L)" + text + "/255.65535");
    }
}

TEST(FirewallRule, FormatsHeadingsForBothFamilies)
{
    const std::pair<int, std::string> kCases[] = {
        {0, std::string(79, '=')},
        {1, "------- ---------- ------ ---- " + std::string(48, '-')},
        {2, std::string(79, '-')},
        {4, " RuleID HitCounter Policy Prot (IPv4)Source ==> Destination"},
        {6, " RuleID HitCounter Policy Prot (IPv6)Source ==> Destination"},
        {3, std::string(255, '#')},
        {7, std::string(255, '#')},
    };
    for (const auto& [kind, line] : kCases) {
        EXPECT_EQ(lineOf<FirewallRule4>(firewallFormatRule4, nullptr, kind), line);
        EXPECT_EQ(lineOf<FirewallRule6>(firewallFormatRule6, nullptr, kind), line);
    }
}

TEST(FirewallRule, KeepsToItsBuffer)
{
    const FirewallRule4 rule{1, kRuleAllow | kRuleSourceAny | kRuleDestinationAny, 6, 0, 0, 0, 0, 0, 0, 5};
    const std::string whole = "      1          5 allow  6    any:any ==> any:any";
    for (std::size_t size = 0; size <= whole.size() + 2; ++size) {
        std::string buffer(size + 1, '#');
        EXPECT_EQ(firewallFormatRule4(&rule, 0, buffer.data(), size), buffer.data());
        EXPECT_EQ(buffer.back(), '#');
        EXPECT_STREQ(buffer.c_str(), size == 0 ? "#" : whole.substr(0, size - 1).c_str());
    }
    EXPECT_EQ(firewallFormatRule4(&rule, 0, nullptr, 10), nullptr);
    EXPECT_EQ(firewallFormatRule6(nullptr, 0, nullptr, 10), nullptr);
}
