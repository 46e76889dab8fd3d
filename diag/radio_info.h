// `get radio info`: country, type, 802.11n/ac parameters and channels of each radio.

#ifndef DIAG_RADIO_INFO_H
#define DIAG_RADIO_INFO_H

#include <cstddef>
#include <cstdint>
#include <span>

/// A range of channels that the controller allows.
struct [[gnu::packed]] ChannelRange {
    std::uint16_t reserved0;
    std::uint16_t first; ///< 0 ends the list of ranges
    std::uint16_t count;
    std::uint16_t reserved6;
};

static_assert(offsetof(ChannelRange, first) == 2);
static_assert(offsetof(ChannelRange, count) == 4);
static_assert(sizeof(ChannelRange) == 8);

/// Channel n is bit n mod 8 of byte n div 8, the least significant bit first.
using ChannelMap = std::uint8_t[128];

/// One radio, in host byte order.
struct [[gnu::packed]] RadioRecord {
    std::uint8_t id;
    std::uint8_t reserved1;
    std::uint8_t mode; ///< 2: disabled; any other value: access point
    std::uint8_t reserved3[21];
    ChannelRange acRanges[8];
    std::int32_t acChannelNumber;
    std::int32_t acChannelAge;
    ChannelMap acChannels;
    std::uint8_t reserved224[8];
    std::uint16_t maxDistance; ///< metres
    std::uint8_t reserved234[2];
    std::uint16_t type;
    std::uint8_t is5GHz;
    char configuredCountry[4];
    char operatingCountry[4];
    std::uint8_t reserved247[5];
    std::uint8_t powerSaveOptimisation;
    std::uint8_t protectionMode;
    std::uint8_t coexistence;
    std::uint8_t txPower; ///< per cent
    std::uint8_t reserved256[2];
    std::uint16_t beaconInterval;
    std::uint8_t mcs;
    std::uint8_t shortGuardInterval; ///< 1: enabled
    std::uint8_t width;              ///< 0: 20 MHz, 1: 40 MHz, other: 80 MHz
    std::uint8_t ackTimeout;
    std::uint8_t channelCount;
    std::uint8_t channel;
    std::uint8_t reserved266[6];
    ChannelMap allowedChannels;
    ChannelMap hardwareChannels;
    ChannelMap nonOccupancyChannels; ///< radar was seen there
    std::uint8_t reserved656[1408];
};

static_assert(offsetof(RadioRecord, id) == 0);
static_assert(offsetof(RadioRecord, mode) == 2);
static_assert(offsetof(RadioRecord, acRanges) == 24);
static_assert(offsetof(RadioRecord, acChannelNumber) == 88);
static_assert(offsetof(RadioRecord, acChannelAge) == 92);
static_assert(offsetof(RadioRecord, acChannels) == 96);
static_assert(offsetof(RadioRecord, maxDistance) == 232);
static_assert(offsetof(RadioRecord, type) == 236);
static_assert(offsetof(RadioRecord, is5GHz) == 238);
static_assert(offsetof(RadioRecord, configuredCountry) == 239);
static_assert(offsetof(RadioRecord, operatingCountry) == 243);
static_assert(offsetof(RadioRecord, powerSaveOptimisation) == 252);
static_assert(offsetof(RadioRecord, protectionMode) == 253);
static_assert(offsetof(RadioRecord, coexistence) == 254);
static_assert(offsetof(RadioRecord, txPower) == 255);
static_assert(offsetof(RadioRecord, beaconInterval) == 258);
static_assert(offsetof(RadioRecord, mcs) == 260);
static_assert(offsetof(RadioRecord, shortGuardInterval) == 261);
static_assert(offsetof(RadioRecord, width) == 262);
static_assert(offsetof(RadioRecord, ackTimeout) == 263);
static_assert(offsetof(RadioRecord, channelCount) == 264);
static_assert(offsetof(RadioRecord, channel) == 265);
static_assert(offsetof(RadioRecord, allowedChannels) == 272);
static_assert(offsetof(RadioRecord, hardwareChannels) == 400);
static_assert(offsetof(RadioRecord, nonOccupancyChannels) == 528);
static_assert(sizeof(RadioRecord) == 2064);

/// Shows the reply to the radio query: whole records back to back, without a count.
void printRadioInfo(std::span<const std::uint8_t> reply);

#endif
