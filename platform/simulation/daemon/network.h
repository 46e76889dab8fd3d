// The networks that the access point offers, one SSID on one radio each, and the stations that use them.

#ifndef PLATFORM_SIMULATION_DAEMON_NETWORK_H
#define PLATFORM_SIMULATION_DAEMON_NETWORK_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

enum Mac : uint8_t { kLocalMac, kSplitMac };
enum Tunnel : uint8_t { kNoTunnel, kTunnel8023, kTunnel80211 };

/// What a controller decides once. The rest is the state of the network's interface.
struct Network {
    uint8_t radio;
    uint8_t number; ///< on its radio
    Mac mac;
    Tunnel tunnel;
    uint16_t features; ///< flags of VapRecord
    uint16_t vlan;
    uint8_t probeSuppression;
    uint8_t meshBackhaul;

    [[nodiscard]] std::string radioInterface() const;
    [[nodiscard]] std::string interface() const;
    [[nodiscard]] std::string ssid() const;
    /// The features, and whether the driver bridges locally.
    [[nodiscard]] uint16_t flags() const;
    [[nodiscard]] bool isEnabled() const;
    [[nodiscard]] bool isStandalone() const;
    /// Its radio is on, and its controller there unless it needs none.
    [[nodiscard]] bool serves(bool linkRuns) const;
};

/// As many as the state file "daemon/vaps" says.
std::span<const Network> networks();

struct Station {
    unsigned index; ///< its own for good, as is its network
    unsigned associationId;
    const Network* network;
};

/// Those on networks that serve. They come and go unless the state file "daemon/stations" says how many there are.
std::vector<Station> presentStations(bool linkRuns);

#endif
