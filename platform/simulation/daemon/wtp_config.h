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

/// Addresses are words in host byte order, intervals seconds.
struct WtpConfig {
    std::string name; ///< empty: the host name is the name
    std::string location = "N/A";
    bool usesDhcp = true;
    uint32_t staticAddress = 0xc0a80102;
    uint32_t staticNetmask = 0xffffff00;
    std::vector<uint32_t> controllers;
    std::vector<std::string> controllerNames;
    uint16_t discoveryType = 0;
    uint16_t maxDiscoveries = 3;
    uint16_t discoveryInterval = 3;
    uint16_t silentInterval = 30;
    uint16_t controllerPort = 5246;
    uint16_t echoInterval = 30;
    uint16_t reportInterval = 30;
    uint16_t idleTimeout = 300;
    uint16_t statisticsTimer = 120;
    uint16_t stationStatisticsInterval = 1;
    uint16_t vapStatisticsInterval = 15;
    uint16_t stationCapabilityInterval = 30;
    uint16_t managementVlan = 0;
    std::string dataChannelSecurity = "clear,dtls,ipsec";
};

/// Reads "/cfg/cw.conf"; what it does not name keeps its default.
WtpConfig readWtpConfig();

/// The host name of "/cfg/sys.conf", the serial number where there is none.
std::string readHostName();

#endif
