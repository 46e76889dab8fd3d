// `get wtp info`: the access point's state as the CAPWAP daemon sees it.

#ifndef DIAG_AP_INFO_H
#define DIAG_AP_INFO_H

#include <cstdint>
#include <span>

/// Prints the reply to the access-point query.
void printApInfo(std::span<const std::uint8_t> reply);

#endif
