// The two settings that the shell sends to the daemon. They are stored in state files of the device, so they stay when
// the daemon ends.

#ifndef PLATFORM_SIMULATION_DAEMON_APPLIED_SETTINGS_H
#define PLATFORM_SIMULATION_DAEMON_APPLIED_SETTINGS_H

#include <cstdint>
#include <span>

/// Message 6: sets the country of both radios. Returns false if the message is not eight bytes long, if its number and
/// letters are not those of one known country, or if the country cannot be stored.
bool applyCountry(std::span<const uint8_t> message);

/// Message 7: sets a radio's transmit power, in per cent of its calibrated maximum or in dBm. Limits the power to the
/// range of the radio. Returns false if the message is not four bytes long, if there is no such radio, or if the power
/// cannot be stored.
bool applyPower(std::span<const uint8_t> message);

#endif
