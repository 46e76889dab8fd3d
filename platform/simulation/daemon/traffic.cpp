#include "platform/simulation/daemon/traffic.h"

#include <array>
#include <fstream>
#include <map>

#include "platform/device_file.h"
#include "platform/simulation/daemon/network.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

using Counters = std::map<std::string, std::array<uint64_t, 4>>;

struct Flow {
    uint64_t packets;
    uint64_t bytes;
};

Counters readCounters()
{
    std::ifstream file(DeviceFile("/sim/traffic").path());
    Counters counters;
    for (std::string interface; file >> interface;)
        for (uint64_t& counter : counters[interface])
            file >> counter;
    return counters;
}

void writeCounters(const Counters& counters)
{
    std::string text;
    for (const auto& [interface, row] : counters) {
        text.append(text.empty() ? "" : "\n").append(interface);
        for (const uint64_t counter : row)
            text.append(" ").append(std::to_string(counter));
    }
    simWriteText("traffic", text.c_str());
}

void add(std::array<uint64_t, 4>& row, Flow received, Flow sent)
{
    row = {row[0] + received.packets, row[1] + received.bytes, row[2] + sent.packets, row[3] + sent.bytes};
}

} // namespace

void countTraffic(uint64_t seconds, bool linkRuns)
{
    const std::vector<Station> stations = presentStations(linkRuns);
    const bool wireIsUp = simInterfaceNumber("eth0", "up") != 0;
    if (stations.empty() && !wireIsUp)
        return;
    Counters counters = readCounters();
    for (const Station& station : stations) {
        const uint64_t packets = seconds * (3 + station.index % 5);
        const Flow up = {packets, 180 * packets};
        const Flow down = wireIsUp ? Flow{2 * packets, 1440 * packets} : Flow{};
        add(counters[station.network->interface()], up, down);
        add(counters[station.network->radioInterface()], up, down);
        if (wireIsUp)
            add(counters["eth0"], down, up);
    }
    if (wireIsUp) {
        // Broadcasts of other devices, which the bridge receives too, and packets of the access point itself.
        add(counters["eth0"], {2 * seconds, 180 * seconds}, {seconds, 130 * seconds});
        add(counters["br0"], {2 * seconds, 180 * seconds}, {});
    }
    writeCounters(counters);
}
