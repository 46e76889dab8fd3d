// The CAPWAP configuration: the record in memory, and copies of the record as it was last read or written.

#ifndef CONF_CW_CONF_H
#define CONF_CW_CONF_H

#include <cstdint>

/// The commands accept at most kAcAddressLimit addresses. The record has room for more, because a file may hold more.
inline constexpr int kAcAddressLimit = 3;
inline constexpr int kAcAddressRoom = 16;
inline constexpr int kAcHostnameLimit = 3;

struct AcAddress {
    std::uint32_t address; ///< host byte order
    std::int32_t inUse;    ///< 1 if the entry is used
    std::uint32_t spare;
};

/// Radio settings of the daemon. The shell sets the defaults and never changes them.
struct CwRadioBlock {
    std::uint16_t version;
    std::uint32_t bands[2]; ///< for each radio, the set of its bands as bits
    std::uint8_t enabled[4];
    std::uint8_t mode;
    std::uint8_t flags[6];
    std::uint8_t shortPreamble;
    std::uint16_t beaconInterval;
    std::uint8_t country[3][4];
    std::uint32_t thresholds[2];
    std::uint32_t retries[2];
    std::uint32_t lifetimes[2];
    std::uint32_t timing[8];
    std::uint8_t antenna[3];
    std::uint8_t rates[8];
    std::uint16_t counters[3];
};

/// The CAPWAP settings, in the order of the daemon's record. Records are copied and compared as bytes. Addresses are in
/// host byte order, intervals and timers in seconds. The file has no keys for the fields named `reserved...`.
struct CwConfig {
    std::uint8_t saved;    ///< 1: the record equals what was last read from or written to the file
    std::uint8_t instance; ///< not used by the shell; part of the daemon's record
    std::uint32_t reservedHead;
    std::uint32_t addrMode; ///< 1: dhcp, 0: static
    std::uint32_t staticIpAddr;
    std::uint32_t staticIpNetmask;
    std::uint32_t staticIpGw;
    std::uint8_t reservedGateway;
    std::uint32_t defaultAcAddress;
    std::uint16_t reservedPorts[2];
    std::uint16_t acCtlPort;
    std::uint16_t dataPort;
    std::uint16_t wtpCtlPort;
    char location[36];
    char name[36];
    std::uint16_t maxDiscoveries;
    std::uint16_t maxRetransmit;
    std::uint16_t maxFailedDtlsSessRetry;
    std::uint8_t discoveryType; ///< 0: auto, 1: static, 2: dhcp, 3: dns, 5: broadcast, 6: multicast, 7: quillsky
    std::uint32_t multicastAddr;
    std::uint8_t multicastTtl;
    std::uint32_t dhcpCode; ///< DHCP option that carries AC addresses
    std::uint16_t numStaMax;
    std::uint16_t reservedMax;
    std::uint16_t numWtpMax;
    std::uint16_t wtpFallback;
    std::uint16_t plainCtl; ///< 1: control messages in plain text
    std::uint8_t sniffPktCtl;
    std::uint16_t echoInterval;
    std::uint16_t maxDiscoveryInterval;
    std::uint16_t reportInterval;
    std::uint16_t staCapRptInterval;
    std::uint16_t staStatsRptInterval;
    std::uint16_t vapStatsRptInterval;
    std::uint16_t reservedReport;
    std::uint16_t widsRptInterval;
    std::uint16_t idleTimeout;
    std::uint16_t statisticsTimer;
    std::uint16_t acIpDiscover;
    std::uint16_t changeStatePendingTimer;
    std::uint16_t dataChannelKeepalive;
    std::uint16_t dataChannelDeadInterval;
    std::uint16_t dataCheckTimer;
    std::uint16_t discoveryInterval;
    std::uint16_t dtlsSessionDelete;
    std::uint16_t imageDataStartTimer;
    std::uint16_t apScanRptTimer[3];
    std::uint16_t retransmitInterval;
    std::uint16_t silentInterval;
    std::uint16_t waitDtls;
    std::uint16_t waitJoin;
    std::uint16_t idleCheck; ///< computed from the default idle time-out; not changed when the time-out changes
    std::uint16_t reservedIdle;
    std::uint16_t echoLimit; ///< computed from the default echo interval; not changed when the interval changes
    std::uint16_t reservedEcho;
    char ssid[32];
    std::uint8_t radioCount;
    CwRadioBlock radio;
    std::uint16_t discoveryCount;
    std::uint16_t failedDtlsAuthFailCount;
    std::uint16_t failedDtlsSessionCount;
    AcAddress acAddresses[kAcAddressRoom];
    std::uint8_t acAddressCount;
    char acHostnames[kAcHostnameLimit][256];
    std::uint8_t acHostnameCount;
    std::uint32_t staticIpDns;
    std::uint16_t adminRebootCount;
    std::uint16_t frameEncapType;
    std::uint16_t lastRebootReason;
    std::uint16_t macType;
    std::uint16_t preferredAc;
    std::uint16_t rebootCount;
    std::uint16_t staticAclTable;
    std::uint16_t reservedAcl;
    std::uint16_t wtpLinkFailureCount;
    std::uint8_t allowDfltTelnet; ///< this and the next three: 0: disabled, 1: enabled, 2: set by the controller
    std::uint8_t allowDfltHttp;
    std::uint8_t allowDfltHttps;
    std::uint8_t allowDfltSsh;
    char dfltLoginPasswd[16];
    std::uint16_t apMgmtVlanid;
    std::uint8_t dataChannelSec; ///< bits: kSecClear, kSecDtls, kSecIpsec
    std::uint8_t security;
    std::uint8_t radioMac;
    std::uint32_t vendorIdHw;
    const char* hwVer; ///< compared by address; set by cwConfSetVersion()
    std::uint32_t vendorIdSw;
    const char* swVer;       ///< compared by address; set by cwConfSetVersion()
    const char* swVerSecond; ///< compared by address; never changes
    std::uint8_t certificate;
    char rootCertificate[128];
    char serverCertificate[128];
    std::uint8_t reservedCertificate[2];
    char defaultName[32];
    std::uint8_t hardwareAddress[6];
    char defaultKey[32];
    std::uint8_t reservedKey[2];
    std::uint8_t reservedSurvey[5];
    char surveyProfile[32];
    std::uint8_t reservedChannels[3];
    std::uint16_t reservedPeriod;
    std::uint32_t fileTime; ///< modification time of the file when it was last read, seconds
};

/// Bits of the data channel's security options.
inline constexpr std::uint8_t kSecClear = 0x03; ///< both bits are set together
inline constexpr std::uint8_t kSecClearShown = 0x02;
inline constexpr std::uint8_t kSecDtls = 0x04;
inline constexpr std::uint8_t kSecIpsec = 0x80;

/// The value of `instance` in the shell's record.
inline constexpr std::uint8_t kShellInstance = 2;

/// The process's record and two copies of it. The snapshot is the record as it was last read from the file; saving
/// compares the record with it. The base is the record as it was last read or written, or the defaults before that; an
/// item that differs from the base has been changed by this session. All bytes are zero until configPrepare() runs.
extern CwConfig cwConfig;
extern CwConfig cwConfigSnapshot;
extern CwConfig cwConfigBase;

/// Fills the record with the defaults.
void cwConfDefault(CwConfig& config, std::uint8_t instance);

/// Replaces a version text by a copy of `value` on the heap. The old copy is released unless one of the process's
/// records still refers to it. Returns false if there is no memory; the text is then unchanged.
bool cwConfSetVersion(const char*& text, const char* value);

/// Copies the bytes of `from` to `to`. Releases version texts that only `to` referred to.
void cwConfCopy(CwConfig& to, const CwConfig& from);

/// Does nothing if `value` is not zero. Otherwise waits for a second and ends the process with SIGSEGV.
void cw_assert(int value);

#endif
