#include "conf/cw_conf.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <unistd.h>

#include "base/product.h"
#include "base/text.h"
#include "conf/ranges.h"

static_assert(std::is_trivially_copyable_v<CwConfig> && std::is_standard_layout_v<CwConfig>);

constinit CwConfig cwConfig{};
constinit CwConfig cwConfigSnapshot{};
constinit CwConfig cwConfigBase{};

namespace
{

constexpr std::uint16_t kIdleTimeout = rangeOf("idle-timeout").initial;
constexpr std::uint16_t kEchoInterval = rangeOf("echo-interval").initial;

consteval std::uint32_t address(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
{
    return a << 24 | b << 16 | c << 8 | d;
}

constexpr CwConfig kDefaults = {
    .saved = 0,
    .instance = 0,
    .reservedHead = 0,
    .addrMode = 1,
    .staticIpAddr = address(192, 168, 1, 2),
    .staticIpNetmask = address(255, 255, 255, 0),
    .staticIpGw = address(192, 168, 1, 1),
    .reservedGateway = 0,
    .defaultAcAddress = address(192, 168, 0, 1),
    .reservedPorts = {6246, 8887},
    .acCtlPort = rangeOf("ac-ctl-port").initial,
    .dataPort = 5247,
    .wtpCtlPort = rangeOf("wtp-ctl-port").initial,
    .location = "N/A",
    .name = "",
    .maxDiscoveries = rangeOf("max-discoveries").initial,
    .maxRetransmit = rangeOf("max-retransmit").initial,
    .maxFailedDtlsSessRetry = rangeOf("max-failed-dtls-sess-retry").initial,
    .discoveryType = 0,
    .multicastAddr = address(224, 0, 1, 140),
    .multicastTtl = rangeOf("multicast-ttl").initial,
    .dhcpCode = rangeOf("dhcp-code").initial,
    .numStaMax = 512,
    .reservedMax = 128,
    .numWtpMax = 16,
    .wtpFallback = 1,
    .plainCtl = rangeOf("plain-ctl").initial,
    .sniffPktCtl = 0,
    .echoInterval = kEchoInterval,
    .maxDiscoveryInterval = rangeOf("max-discovery-interval").initial,
    .reportInterval = rangeOf("report-interval").initial,
    .staCapRptInterval = 30,
    .staStatsRptInterval = 1,
    .vapStatsRptInterval = 15,
    .reservedReport = 0,
    .widsRptInterval = 30,
    .idleTimeout = kIdleTimeout,
    .statisticsTimer = rangeOf("statistics-timer").initial,
    .acIpDiscover = 3,
    .changeStatePendingTimer = 25,
    .dataChannelKeepalive = rangeOf("data-channel-keepalive").initial,
    .dataChannelDeadInterval = 90,
    .dataCheckTimer = 30,
    .discoveryInterval = 3,
    .dtlsSessionDelete = 5,
    .imageDataStartTimer = 30,
    .apScanRptTimer = {30, 30, 30},
    .retransmitInterval = 3,
    .silentInterval = 30,
    .waitDtls = 31,
    .waitJoin = 21,
    .idleCheck = kIdleTimeout >= 110 ? kIdleTimeout / 10 : 10,
    .reservedIdle = 5,
    .echoLimit = kEchoInterval * 2,
    .reservedEcho = 2,
    .ssid = "",
    .radioCount = 0,
    .radio =
        {
            .version = 4,
            .bands = {5, 17},
            .enabled = {1, 1, 1, 1},
            .mode = 4,
            .flags = {},
            .shortPreamble = 1,
            .beaconInterval = 100,
            .country = {{'N', 'A', 255, 0}, {'N', 'A', 255, 0}, {'N', 'A', 255, 0}},
            .thresholds = {2346, 2346},
            .retries = {7, 4},
            .lifetimes = {512, 512},
            .timing = {4, 7, 0, 0, 120, 250, 60, 15},
            .antenna = {1, 3, 2},
            .rates = {2, 2, 2, 2, 2, 2, 2, 2},
            .counters = {},
        },
    .discoveryCount = 0,
    .failedDtlsAuthFailCount = 0,
    .failedDtlsSessionCount = 0,
    .acAddresses = {},
    .acAddressCount = 0,
    .acHostnames = {},
    .acHostnameCount = 0,
    .staticIpDns = address(9, 9, 9, 9),
    .adminRebootCount = 0,
    .frameEncapType = 2,
    .lastRebootReason = 255,
    .macType = 0,
    .preferredAc = 0,
    .rebootCount = 0,
    .staticAclTable = 0,
    .reservedAcl = 0,
    .wtpLinkFailureCount = 0,
    .allowDfltTelnet = 0,
    .allowDfltHttp = 0,
    .allowDfltHttps = rangeOf("allow-dflt-https").initial,
    .allowDfltSsh = rangeOf("allow-dflt-ssh").initial,
    .dfltLoginPasswd = "",
    .apMgmtVlanid = rangeOf("ap-mgmt-vlanid").initial,
    .dataChannelSec = kSecClear | kSecDtls | kSecIpsec,
    .security = 2,
    .radioMac = 0,
    .vendorIdHw = kVendorId,
    .hwVer = kHwVer,
    .vendorIdSw = kVendorId,
    .swVer = kSwVer,
    .swVerSecond = kSwVerSecond,
    .certificate = 1,
    .rootCertificate = "/etc/root.pem",
    .serverCertificate = "/etc/server.pem",
    .reservedCertificate = {},
    .defaultName = {},
    .hardwareAddress = {},
    .defaultKey = "quorvane",
    .reservedKey = {2, 4},
    .reservedSurvey = {50, 1, 1, 100, 100},
    .surveyProfile = "QLN_SURVEY",
    .reservedChannels = {30, 6, 36},
    .reservedPeriod = 100,
    .fileTime = 0,
};

/// Ends the process if the record has more than two radios, or has two radios and no bands for them.
void checkRadios(const CwConfig& config)
{
    cw_assert(config.radioCount < 3);
    if (config.radioCount == 2)
        cw_assert(config.radio.bands[0] != 0 && config.radio.bands[1] != 0);
}

bool refersTo(const CwConfig& config, const char* text)
{
    return text == config.hwVer || text == config.swVer;
}

void releaseVersion(const char* text)
{
    if (text == kHwVer || text == kSwVer)
        return;
    for (const CwConfig* config : {&cwConfig, &cwConfigSnapshot, &cwConfigBase})
        if (refersTo(*config, text))
            return;
    std::free(const_cast<char*>(text));
}

} // namespace

// The record is copied as bytes, so that the padding of all records is equal and they can be compared as bytes.
void cwConfDefault(CwConfig& config, std::uint8_t instance)
{
    std::memcpy(&config, &kDefaults, sizeof config);
    copyText(config.defaultName, kDefaultDeviceName);
    config.instance = instance;
    checkRadios(config);
}

bool cwConfSetVersion(const char*& text, const char* value)
{
    const char* copy = strdup(value);
    if (copy == nullptr)
        return false;
    const char* old = text;
    text = copy;
    releaseVersion(old);
    return true;
}

void cwConfCopy(CwConfig& to, const CwConfig& from)
{
    const char* const oldTexts[] = {to.hwVer, to.swVer};
    std::memcpy(&to, &from, sizeof to);
    for (const char* text : oldTexts)
        if (!refersTo(to, text))
            releaseVersion(text);
}

void cw_assert(int value)
{
    if (value != 0)
        return;
    sleep(1);
    volatile int* volatile nowhere = nullptr;
    *nowhere = 0; // NOLINT(clang-analyzer-core.NullDereference): raises SIGSEGV on purpose
    std::fprintf(stderr, "%s:%d: %s: Assertion `%s' failed.\n", "../capwap/include/cwUtils", 646, "cw_assert", "val");
    std::abort();
}
