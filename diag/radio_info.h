// `get radio info`: country, type, 802.11n/ac parameters and channels of each radio.

#ifndef DIAG_RADIO_INFO_H
#define DIAG_RADIO_INFO_H

#include <cstdint>
#include <span>

/// Prints the reply to the radio query: whole records back to back, without a count.
void printRadioInfo(std::span<const std::uint8_t> reply);

#endif
