// `get vap cfg-info`: the virtual access points, one SSID on one radio each.

#ifndef DIAG_VAP_LIST_H
#define DIAG_VAP_LIST_H

#include <cstdint>
#include <span>

/// Prints the reply to the VAP query.
void printVapList(std::span<const std::uint8_t> reply);

#endif
