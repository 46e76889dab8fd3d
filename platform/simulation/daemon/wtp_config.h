// The device's configuration files, as the daemon reads them.

#ifndef PLATFORM_SIMULATION_DAEMON_WTP_CONFIG_H
#define PLATFORM_SIMULATION_DAEMON_WTP_CONFIG_H

#include <cstdint>
#include <map>
#include <string>

/// The items of the factory's "/etc/cw.conf" and of "/cfg/cw.conf", by key.
class WtpConfig
{
public:
    WtpConfig();

    /// The first value of a list; empty where there is none.
    [[nodiscard]] std::string first(const std::string& key) const;
    /// The last value; empty where there is none.
    [[nodiscard]] std::string text(const std::string& key) const;
    /// 0 if the value is no number.
    [[nodiscard]] uint16_t number(const std::string& key) const;
    /// In host byte order; 0 if the value is no address.
    [[nodiscard]] uint32_t address(const std::string& key) const;

private:
    std::multimap<std::string, std::string> items_;
};

/// The host name of "/cfg/sys.conf", or the serial number if there is none.
std::string readHostName();

#endif
