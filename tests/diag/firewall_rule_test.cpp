#include "diag/firewall_rule.h"

#include <arpa/inet.h>
#include <cstring>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace
{

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
    const std::pair<FirewallRule4, const char*> kCases[] = {
        {{7, kRuleAllow, 6, 0x0a000001, 0xff00ff01, 0xc0a80100, 0xffffff00, 443, 0, 12},
         "      7         12 allow  6    192.168.1.0/24:any ==> 10.0.0.1/17:443"},
        {{65535, kRuleMarked | kRuleSourceLocal | kRuleDestinationLocal, 254, 0xffffffff, 0xffffffff, 0, 0, 65535,
          65535, -2147483647 - 1},
         " D65535 -2147483648 deny   254  (L)0.0.0.0/0:65535 ==> (L)255.255.255.255/32:65535"},
        // If an endpoint has the address "any", the mark "(L)" of a local address is not printed for it.
        {{1, kRuleAllow | kRuleSourceAny | kRuleSourceLocal, kRuleAnyProtocol, 1, 1, 1, 1, 1, 53, 0},
         "      1          0 allow  any  any:53 ==> 0.0.0.1/1:1"},
        {{1, kRuleDestinationAny | kRuleDestinationLocal, 0, 1, 1, 1, 1, 0, 0, 0},
         "      1          0 deny   0    0.0.0.1/1:any ==> any:any"},
    };
    for (const auto& [rule, line] : kCases)
        EXPECT_EQ(lineOf(firewallFormatRule4, &rule), line);
}

TEST(FirewallRule, FormatsRulesForIpv6)
{
    FirewallRule6 rule{10, kRuleAllow | kRuleMarked | kRuleSourceLocal, 58, {}, {}, 0, 1024, 128, 64, {}, 123456};
    inet_pton(AF_INET6, "fe80::211:22ff:fe33:4455", rule.source);
    inet_pton(AF_INET6, "2001:db8::1:0:0:1", rule.destination);
    EXPECT_EQ(lineOf(firewallFormatRule6, &rule),
              " D   10     123456 allow  58   (L)fe80::211:22ff:fe33:4455/64.1024 ==> 2001:db8:0:0:1::1/128.any");

    rule = {1, kRuleSourceAny | kRuleDestinationLocal, kRuleAnyProtocol, {}, {}, 65535, 1024, 255, 64, {}, -1};
    // If several runs of zeros are the longest, the last one is left out.
    for (const std::string address : {"::", "1::", "::ffff:102:304", "1000:200:30:4:0:ab:cd:ef", "0:0:1:0:0:1::",
                                      "::1:0:0:1:1", "0:0:1::1:0", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"}) {
        ASSERT_EQ(inet_pton(AF_INET6, address.c_str(), rule.destination), 1) << address;
        EXPECT_EQ(lineOf(firewallFormatRule6, &rule),
                  "      1         -1 deny   any  any.1024 ==> (L)" + address + "/255.65535");
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
