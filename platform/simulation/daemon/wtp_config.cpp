#include "platform/simulation/daemon/wtp_config.h"

#include <cstdlib>
#include <fstream>

#include "base/address.h"
#include "platform/device_file.h"
#include "platform/system_library.h"

namespace
{

using Items = std::multimap<std::string, std::string>;

void addItems(Items& items, const char* devicePath)
{
    std::ifstream file(DeviceFile(devicePath).path());
    for (std::string line; std::getline(file, line);)
        if (const std::size_t equals = line.find('='); !line.starts_with('#') && equals != std::string::npos)
            items.emplace(line.substr(0, equals), line.substr(equals + 1));
}

std::string lastOf(const Items& items, const std::string& key)
{
    const auto [begin, end] = items.equal_range(key);
    return begin != end ? std::prev(end)->second : "";
}

} // namespace

// The initial list holds the default values of items that neither configuration file sets.
WtpConfig::WtpConfig()
    : items_{
          {"location", "N/A"}, {"StaStatsRptInterval", "1"}, {"VapStatsRptInterval", "15"}, {"StaCapRptInterval", "30"}}
{
    for (const char* file : {"/etc/cw.conf", "/cfg/cw.conf"})
        addItems(items_, file);
}

std::string WtpConfig::first(const std::string& key) const
{
    const auto item = items_.lower_bound(key);
    return item != items_.end() && item->first == key ? item->second : "";
}

std::string WtpConfig::text(const std::string& key) const
{
    return lastOf(items_, key);
}

uint16_t WtpConfig::number(const std::string& key) const
{
    return static_cast<uint16_t>(std::atoi(text(key).c_str()));
}

uint32_t WtpConfig::address(const std::string& key) const
{
    uint32_t address = 0;
    parseIpv4(text(key).c_str(), &address);
    return address;
}

std::string readHostName()
{
    char serialNumber[256] = "";
    read_sn(serialNumber, sizeof serialNumber, 0);
    Items items{{"hostname", serialNumber}};
    addItems(items, "/cfg/sys.conf");
    return lastOf(items, "hostname");
}
