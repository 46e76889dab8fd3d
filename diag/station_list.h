// `get wtp stations`: the associated wireless clients.

#ifndef DIAG_STATION_LIST_H
#define DIAG_STATION_LIST_H

#include <cstdint>
#include <span>

/// Prints the reply to the station query.
void printStationList(std::span<const std::uint8_t> reply);

#endif
