// The two settings that the shell sends to the daemon. They are state of the device, so they survive the daemon.

#ifndef PLATFORM_SIMULATION_DAEMON_APPLIED_SETTINGS_H
#define PLATFORM_SIMULATION_DAEMON_APPLIED_SETTINGS_H

#include <cstdint>
#include <span>

/// Message 6: a country for both radios. False: the message is not eight bytes, or names no country by both its number
/// and its letters.
bool applyCountry(std::span<const uint8_t> message);

/// Message 7: a radio's transmit power, in per cent of its calibrated maximum or in dBm, cut to what the radio can do.
/// False: the message is not four bytes, or names no radio.
bool applyPower(std::span<const uint8_t> message);

#endif
