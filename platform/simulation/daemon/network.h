// The networks that the access point offers, one SSID on one radio each, and the stations that use them.

#ifndef PLATFORM_SIMULATION_DAEMON_NETWORK_H
#define PLATFORM_SIMULATION_DAEMON_NETWORK_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

enum Mac : uint8_t { kLocalMac, kSplitMac };
enum Tunnel : uint8_t { kNoTunnel, kTunnel8023, kTunnel80211 };

/// The settings that come from the controller. All others are state files of the network's interface.
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
    /// `features`, and the flag kLocalBridging if the driver bridges locally.
    [[nodiscard]] uint16_t flags() const;
    [[nodiscard]] bool isEnabled() const;
    [[nodiscard]] bool isStandalone() const;
    /// Whether the network and its radio are up, and the link runs if the network needs it.
    [[nodiscard]] bool serves(bool linkRuns) const;
};

/// The number of networks is in the state file "daemon/vaps".
std::span<const Network> networks();

struct Station {
    unsigned index; ///< identifies the station and determines its network
    unsigned associationId;
    const Network* network;
};

/// The stations that are present now, on the networks for which serves() is true. If the state file "daemon/stations"
/// sets the number of stations, all of them are always present. Otherwise each of them is absent from time to time.
std::vector<Station> presentStations(bool linkRuns);

#endif
