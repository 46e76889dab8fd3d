#include "platform/simulation/daemon/wtp_config.h"

#include <cstdlib>
#include <fstream>
#include <functional>

#include "base/address.h"
#include "platform/device_file.h"
#include "platform/system_library.h"

namespace
{

constexpr std::pair<const char*, uint16_t WtpConfig::*> kNumbers[] = {
    {"discovery-type", &WtpConfig::discoveryType},
    {"max-discoveries", &WtpConfig::maxDiscoveries},
    {"discovery-interval", &WtpConfig::discoveryInterval},
    {"silent-interval", &WtpConfig::silentInterval},
    {"ac-ctl-port", &WtpConfig::controllerPort},
    {"echo-interval", &WtpConfig::echoInterval},
    {"report-interval", &WtpConfig::reportInterval},
    {"idle-timeout", &WtpConfig::idleTimeout},
    {"statistics-timer", &WtpConfig::statisticsTimer},
    {"StaStatsRptInterval", &WtpConfig::stationStatisticsInterval},
    {"VapStatsRptInterval", &WtpConfig::vapStatisticsInterval},
    {"StaCapRptInterval", &WtpConfig::stationCapabilityInterval},
    {"plain-ctl", &WtpConfig::plainControl},
    {"ap-mgmt-vlanid", &WtpConfig::managementVlan},
};

/// Calls `take` with each `key=value` line of a file of the device.
void eachItem(const char* devicePath, const std::function<void(const std::string& key, const std::string& value)>& take)
{
    std::ifstream file(DeviceFile(devicePath).path());
    for (std::string line; std::getline(file, line);) {
        const std::size_t equals = line.find('=');
        if (!line.starts_with('#') && equals != std::string::npos)
            take(line.substr(0, equals), line.substr(equals + 1));
    }
}

void setItem(WtpConfig& config, const std::string& key, const std::string& value)
{
    for (const auto& [name, field] : kNumbers)
        if (key == name)
            config.*field = static_cast<uint16_t>(std::strtol(value.c_str(), nullptr, 10));
    if (key == "name")
        config.name = value;
    else if (key == "location")
        config.location = value;
    else if (key == "data-channel-sec")
        config.dataChannelSecurity = value;
    else if (key == "addr-mode")
        config.usesDhcp = value == "dhcp";
    else if (key == "static-ip-addr")
        parseIpv4(value.c_str(), &config.staticAddress);
    else if (key == "static-ip-netmask")
        parseIpv4(value.c_str(), &config.staticNetmask);
    else if (key == "ac-hostname")
        config.controllerNames.push_back(value);
    else if (uint32_t address = 0; key == "ac-ip-addr" && parseIpv4(value.c_str(), &address))
        config.controllers.push_back(address);
}

} // namespace

WtpConfig readWtpConfig()
{
    WtpConfig config;
    for (const char* file : {"/etc/cw.conf", "/cfg/cw.conf"})
        eachItem(file, [&config](const std::string& key, const std::string& value) { setItem(config, key, value); });
    return config;
}

std::string readHostName()
{
    char serialNumber[256] = "";
    read_sn(serialNumber, sizeof serialNumber, 0);
    std::string name = serialNumber;
    eachItem("/cfg/sys.conf", [&name](const std::string& key, const std::string& value) {
        if (key == "hostname")
            name = value;
    });
    return name;
}
