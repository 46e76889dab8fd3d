// What the daemon takes from the device's configuration files.

#ifndef PLATFORM_SIMULATION_DAEMON_WTP_CONFIG_H
#define PLATFORM_SIMULATION_DAEMON_WTP_CONFIG_H

#include <cstdint>
#include <string>
#include <vector>

/// How the daemon looks for its controller, by the number in the file.
enum class Discovery : uint16_t {
    automatic = 0,
    fixed = 1,
    dhcp = 2,
    dns = 3,
    broadcast = 5,
    multicast = 6,
    cloud = 7
};

/// Addresses are words in host byte order, intervals seconds. What no file holds has its default here.
struct WtpConfig {
    std::string name; ///< empty: the host name is the name
    std::string location = "N/A";
    bool usesDhcp{};
    uint32_t staticAddress{};
    uint32_t staticNetmask{};
    std::vector<uint32_t> controllers;
    std::vector<std::string> controllerNames;
    uint16_t discoveryType{};
    uint16_t maxDiscoveries{};
    uint16_t discoveryInterval{};
    uint16_t silentInterval{};
    uint16_t controllerPort{};
    uint16_t echoInterval{};
    uint16_t reportInterval{};
    uint16_t idleTimeout{};
    uint16_t statisticsTimer{};
    uint16_t stationStatisticsInterval = 1;
    uint16_t vapStatisticsInterval = 15;
    uint16_t stationCapabilityInterval = 30;
    uint16_t managementVlan{};
    uint16_t plainControl{}; ///< non-zero: no DTLS
    std::string dataChannelSecurity;
};

/// Reads the factory's "/etc/cw.conf", then "/cfg/cw.conf".
WtpConfig readWtpConfig();

/// The host name of "/cfg/sys.conf", the serial number where there is none.
std::string readHostName();

#endif
