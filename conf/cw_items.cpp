#include "conf/cw_items.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <type_traits>

#include "conf/messages.h"
#include "conf/ranges.h"
#include "shell/output.h"

namespace
{

constexpr int kKeyWidth = 29;

template <auto Member>
std::span<char> textOf(CwConfig& config)
{
    return config.*Member;
}

consteval CwItem item(const char* key, const CwKind& kind)
{
    return {key, &kind, {}, 0, 0, kKeyWidth};
}

/// A row for an item. It does not compile if the field is missing or has a type that the kind does not use.
template <typename Field>
consteval CwItem item(const char* key, const CwFieldKind<Field>& kind, std::type_identity_t<Field> field)
{
    return {key, &kind.kind, field, 0, 0, kKeyWidth};
}

consteval CwItem stored(const char* key, CwNumber field)
{
    return item(key, kStored, field);
}

consteval CwItem checked(const char* key, CwNumber field, const CwFieldKind<CwNumber>& kind = kChecked)
{
    return {key, &kind.kind, field, rangeOf(key).low, rangeOf(key).high, kKeyWidth};
}

consteval CwItem padded(int keyWidth, CwItem row)
{
    row.keyWidth = keyWidth;
    return row;
}

consteval CwItem unlisted(CwItem row)
{
    return padded(0, row);
}

constexpr CwItem kItems[] = {
    item("data-channel-sec", kSecurity),
    checked("dhcp-code", &CwConfig::dhcpCode),
    checked("plain-ctl", &CwConfig::plainCtl),
    padded(28, checked("ac-ctl-port", &CwConfig::acCtlPort)),
    checked("wtp-ctl-port", &CwConfig::wtpCtlPort),
    item("static-ip-addr", kOwnAddress, &CwConfig::staticIpAddr),
    item("static-ip-netmask", kAddress, &CwConfig::staticIpNetmask),
    item("static-ip-gw", kAddress, &CwConfig::staticIpGw),
    item("multicast-addr", kMulticast, &CwConfig::multicastAddr),
    item("static-ip-dns", kAddress, &CwConfig::staticIpDns),
    item("addr-mode", kAddrMode),
    checked("ap-mgmt-vlanid", &CwConfig::apMgmtVlanid, kVlan),
    stored("ac-ip-discover", &CwConfig::acIpDiscover),
    stored("change-state-pending-timer", &CwConfig::changeStatePendingTimer),
    checked("data-channel-keepalive", &CwConfig::dataChannelKeepalive),
    stored("data-channel-dead-interval", &CwConfig::dataChannelDeadInterval),
    stored("data-check-timer", &CwConfig::dataCheckTimer),
    stored("discovery-interval", &CwConfig::discoveryInterval),
    stored("dtls-session-delete", &CwConfig::dtlsSessionDelete),
    checked("echo-interval", &CwConfig::echoInterval),
    stored("image-data-start-timer", &CwConfig::imageDataStartTimer),
    checked("max-discovery-interval", &CwConfig::maxDiscoveryInterval),
    checked("max-failed-dtls-sess-retry", &CwConfig::maxFailedDtlsSessRetry),
    stored("retransmit-interval", &CwConfig::retransmitInterval),
    stored("silent-interval", &CwConfig::silentInterval),
    checked("statistics-timer", &CwConfig::statisticsTimer),
    stored("wait-dtls", &CwConfig::waitDtls),
    stored("wait-join", &CwConfig::waitJoin),
    stored("discovery-count", &CwConfig::discoveryCount),
    item("discovery-type", kDiscoveryType, &CwConfig::discoveryType),
    stored("failed-dtls-auth-fail-count", &CwConfig::failedDtlsAuthFailCount),
    stored("failed-dtls-session-count", &CwConfig::failedDtlsSessionCount),
    checked("idle-timeout", &CwConfig::idleTimeout),
    checked("max-discoveries", &CwConfig::maxDiscoveries),
    checked("max-retransmit", &CwConfig::maxRetransmit),
    checked("report-interval", &CwConfig::reportInterval),
    stored("StaCapRptInterval", &CwConfig::staCapRptInterval),
    stored("StaStatsRptInterval", &CwConfig::staStatsRptInterval),
    stored("VapStatsRptInterval", &CwConfig::vapStatsRptInterval),
    stored("WidsRptInterval", &CwConfig::widsRptInterval),
    stored("wtp-fallback", &CwConfig::wtpFallback),
    item("ac-ip-addr", kAcAddresses),
    item("ac-hostname", kAcHostnames),
    stored("admin-reboot-count", &CwConfig::adminRebootCount),
    stored("frame-encap-type", &CwConfig::frameEncapType),
    stored("last-reboot-reason", &CwConfig::lastRebootReason),
    stored("MacType", &CwConfig::macType),
    stored("preferred-ac", &CwConfig::preferredAc),
    stored("reboot-count", &CwConfig::rebootCount),
    stored("static-acl-table", &CwConfig::staticAclTable),
    padded(28, checked("allow-dflt-https", &CwConfig::allowDfltHttps)),
    padded(26, checked("allow-dflt-ssh", &CwConfig::allowDfltSsh)),
    item("dflt_login_passwd", kPassword, textOf<&CwConfig::dfltLoginPasswd>),
    stored("numStaMax", &CwConfig::numStaMax),
    stored("numWtpMax", &CwConfig::numWtpMax),
    stored("security", &CwConfig::security),
    stored("radio_mac", &CwConfig::radioMac),
    stored("dtlsPolicy", &CwConfig::dataChannelSec),
    stored("vendorId_hw", &CwConfig::vendorIdHw),
    item("hwVer", kVersion, &CwConfig::hwVer),
    stored("vendorId_sw", &CwConfig::vendorIdSw),
    item("swVer", kVersion, &CwConfig::swVer),
    item("ssid", kText, textOf<&CwConfig::ssid>),
    unlisted(item("ap-dtlsPolicy", kSecurity)),
    unlisted(checked("multicast-ttl", &CwConfig::multicastTtl)),
    unlisted(item("allow-dflt-telnet", kIgnored, &CwConfig::allowDfltTelnet)),
    unlisted(item("allow-dflt-http", kIgnored, &CwConfig::allowDfltHttp)),
    unlisted(stored("WTPLinkFailureCount", &CwConfig::wtpLinkFailureCount)),
    unlisted(stored("sniff_pkt_ctl", &CwConfig::sniffPktCtl)),
    unlisted(item("ApScanRptTimer", kScanTimers)),
    unlisted(item("name", kText, textOf<&CwConfig::name>)),
    unlisted(item("location", kText, textOf<&CwConfig::location>)),
};

/// The row of `key`. A key that is not in the table does not compile.
consteval const CwItem* at(std::string_view key)
{
    const CwItem* row = kItems;
    while (row->key != key)
        ++row;
    return row;
}

constexpr const CwItem* kTimers[] = {
    at("ac-ip-discover"),
    at("change-state-pending-timer"),
    at("data-channel-keepalive"),
    at("data-channel-dead-interval"),
    at("data-check-timer"),
    at("discovery-interval"),
    at("dtls-session-delete"),
    at("echo-interval"),
    at("image-data-start-timer"),
    at("max-discovery-interval"),
    at("max-failed-dtls-sess-retry"),
    at("retransmit-interval"),
    at("silent-interval"),
    at("statistics-timer"),
    at("wait-dtls"),
    at("wait-join"),
};

constexpr const CwItem* kVariables[] = {
    at("discovery-count"), at("discovery-type"), at("idle-timeout"),
    at("max-discoveries"), at("max-retransmit"), at("report-interval"),
};

constexpr const CwItem* kWtpVariables[] = {
    at("ac-ip-addr"),       at("ac-hostname"),    at("allow-dflt-telnet"), at("allow-dflt-http"),
    at("allow-dflt-https"), at("allow-dflt-ssh"), at("ac-ctl-port"),       at("wtp-ctl-port"),
    at("plain-ctl"),        at("addr-mode"),      at("static-ip-addr"),    at("static-ip-netmask"),
    at("static-ip-gw"),     at("static-ip-dns"),  at("multicast-addr"),    at("multicast-ttl"),
    at("dhcp-code"),        at("ap-mgmt-vlanid"), at("data-channel-sec"),
};

constexpr const CwItem* kAcVariables[] = {
    at("numStaMax"),   at("numWtpMax"), at("security"),    at("radio_mac"),
    at("vendorId_hw"), at("hwVer"),     at("vendorId_sw"), at("swVer"),
};

constexpr CwSection kSections[] = {
    {"#CW proto timers:\n", "# CW Protocol Timer Parameters :\n", kTimers},
    {"#CW proto variables:\n", "# CW Protocol Variables:\n", kVariables},
    {"#CW WTP saved variables:\n", "# CW WTP saved variables:\n", kWtpVariables},
    {"#CW AC saved variables:\n", "# CW AC saved variables:\n", kAcVariables},
};

} // namespace

constinit const std::span<const CwItem> cwItems = kItems;
constinit const std::span<const CwSection> cwSections = kSections;

const CwItem* cwConfItem(std::string_view key)
{
    const auto* row = std::find_if(std::begin(kItems), std::end(kItems),
                                   [key](const CwItem& candidate) { return candidate.key == key; });
    return row != std::end(kItems) ? row : nullptr;
}

int cwConfSetItem(const char* key, const char* value, CwConfig& config)
{
    const CwItem* row = cwConfItem(key);
    if (row == nullptr || row->kind->set == nullptr) {
        cli_printf("    Unknown configuration item '%s'\n", key);
        return -1;
    }
    if (!row->kind->set(*row, value, config)) {
        cli_printf(kInvalidParameter, value);
        return -1;
    }
    config.saved = 0;
    return 0;
}

bool cwConfItemIsSame(const CwItem& item, const CwConfig& one, const CwConfig& other)
{
    const int count = cwValueCount(item, one);
    bool isSame = count == cwValueCount(item, other);
    for (int i = 0; isSame && i < count; ++i) {
        char value[kCwValueSize];
        char otherValue[kCwValueSize];
        item.kind->format(item, one, i, std::span(value));
        item.kind->format(item, other, i, std::span(otherValue));
        isSame = std::strcmp(value, otherValue) == 0;
    }
    return isSame;
}

void cwConfCopyItem(const CwItem& item, const CwConfig& from, CwConfig& to)
{
    if (isCwList(item))
        item.kind->list->clear(to);
    forEachValue(item, from, [&](const char*, const char* value) { item.kind->set(item, value, to); });
}
