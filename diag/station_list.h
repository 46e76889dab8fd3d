// `get wtp stations`: the associated wireless clients.

#ifndef DIAG_STATION_LIST_H
#define DIAG_STATION_LIST_H

#include <cstddef>
#include <cstdint>
#include <span>

/// One client, in host byte order. The SSID ends at its first zero or at the end of its field.
struct [[gnu::packed]] StationRecord {
    std::uint8_t number; ///< shown in the heading
    std::uint8_t type;   ///< 1 station, 2 mesh station, 3 mesh host
    std::uint8_t reserved2[12];
    std::uint8_t radio;
    std::uint8_t reserved15;
    std::uint16_t aid;
    std::uint8_t vap;
    std::uint8_t reserved19;
    std::uint8_t bssid[6];
    std::uint8_t mac[6];
    std::uint8_t reserved32[6];
    std::uint16_t vlan;
    std::uint8_t reserved40[50];
    char ssid[33];
    std::uint8_t reserved123[5];
};

static_assert(offsetof(StationRecord, number) == 0);
static_assert(offsetof(StationRecord, type) == 1);
static_assert(offsetof(StationRecord, radio) == 14);
static_assert(offsetof(StationRecord, aid) == 16);
static_assert(offsetof(StationRecord, vap) == 18);
static_assert(offsetof(StationRecord, bssid) == 20);
static_assert(offsetof(StationRecord, mac) == 26);
static_assert(offsetof(StationRecord, vlan) == 38);
static_assert(offsetof(StationRecord, ssid) == 90);
static_assert(sizeof(StationRecord) == 128);

/// Shows the reply to the station query.
void printStationList(std::span<const std::uint8_t> reply);

#endif
