#include "platform/simulation/daemon/network.h"

#include <algorithm>
#include <ctime>

#include "platform/daemon_records.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

/// The default number of stations, and the highest number that can be set.
constexpr int kVisitors = 12;
constexpr int kMostStations = 511;

constexpr uint16_t kPortal = VapRecord::kStandalone | VapRecord::kCaptivePortal;
constexpr uint16_t kBranch = VapRecord::kSplitTunnel | VapRecord::kLocalAuthentication;

constexpr Network kNetworks[] = {
    {0, 0, kSplitMac, kTunnel8023, 0, 10, 1, 0},
    {1, 0, kSplitMac, kTunnel80211, 0, 10, 0, 0},
    {0, 1, kLocalMac, kNoTunnel, kPortal, 20, 0, 0},
    {1, 1, kLocalMac, kNoTunnel, kPortal, 20, 0, 0},
    {0, 2, kLocalMac, kTunnel8023, VapRecord::kLocalSwitching, 30, 2, 0},
    {1, 2, kLocalMac, kTunnel8023, kBranch, 31, 0, 0},
    {0, 3, kLocalMac, kTunnel8023, 0, 40, 0, 0},
    {1, 3, kLocalMac, kTunnel8023, 0, 0, 0, 1},
};

bool isUp(const std::string& interface)
{
    return simInterfaceNumber(interface.c_str(), "up") != 0;
}

} // namespace

std::string Network::radioInterface() const
{
    return "wlan" + std::to_string(radio);
}

std::string Network::interface() const
{
    return radioInterface() + "-va" + std::to_string(number);
}

std::string Network::ssid() const
{
    char text[33];
    simInterfaceText(interface().c_str(), "ssid", text, sizeof text);
    return text;
}

uint16_t Network::flags() const
{
    const bool bridges = simInterfaceNumber(interface().c_str(), "local_bridging") != 0;
    return static_cast<uint16_t>(features | (bridges ? VapRecord::kLocalBridging : 0));
}

bool Network::isEnabled() const
{
    return isUp(interface());
}

bool Network::isStandalone() const
{
    return (features & VapRecord::kStandalone) != 0;
}

bool Network::serves(bool linkRuns) const
{
    return isEnabled() && isUp(radioInterface()) && (linkRuns || isStandalone());
}

std::span<const Network> networks()
{
    constexpr int kMost = std::size(kNetworks);
    return std::span(kNetworks).first(
        static_cast<std::size_t>(std::clamp(simReadNumber("daemon/vaps", kMost), 0, kMost)));
}

std::vector<Station> presentStations(bool linkRuns)
{
    constexpr unsigned kSpread = 6; // only the first six networks have stations; in a new device, the others are off
    const int wanted = simReadNumber("daemon/stations", -1);
    const auto count = static_cast<unsigned>(wanted < 0 ? kVisitors : std::min(wanted, kMostStations));
    const std::time_t minute = std::time(nullptr) / 60;
    std::vector<Station> present;
    for (unsigned home = 0; home < kSpread && home < networks().size(); ++home) {
        const Network& network = networks()[home];
        if (!network.serves(linkRuns))
            continue;
        for (unsigned i = home; i < count; i += kSpread)
            // Each station is absent for three minutes in each of its periods, which are 9 to 13 minutes long.
            if (wanted >= 0 || (minute + 3L * i) % (9L + i % 5) > 2)
                present.push_back({i, i / kSpread + 1, &network});
    }
    return present;
}
