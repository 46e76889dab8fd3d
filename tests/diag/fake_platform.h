// The platform's libraries as the tests of radio and hardware commands see them: what was called, and what they answer.

#ifndef TESTS_DIAG_FAKE_PLATFORM_H
#define TESTS_DIAG_FAKE_PLATFORM_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/support/device.h"

struct SentMessage {
    int type;
    std::vector<std::uint8_t> bytes;

    bool operator==(const SentMessage&) const = default;
};

struct FakePlatform {
    std::vector<SentMessage> sent; ///< messages to the daemon
    int sendResult = 0;
    int buffersLeft = 1000; ///< the channel has no buffers after that many
    int buffersInUse = 0;

    int regionResult = 0;
    char region = 'A';
    std::string regionAsked;             ///< the last text that the default country was asked for
    const char* defaultCountry = "US";   ///< null: the region has none
    std::vector<std::string> namesAsked; ///< names that a country code was asked for

    bool keyReleased = true;
    std::map<int, int> lines; ///< general-purpose lines by number
    int ledTestStatus = 0;
    std::vector<std::string> scans; ///< interface and buffer size of each background scan
    int scanNeeds = 0;              ///< bytes that a scan's result takes
};

extern FakePlatform fakePlatform;

/// Begins every test with the values above.
class FakePlatformTest : public DeviceTest
{
protected:
    FakePlatformTest() { fakePlatform = {}; }

    /// What a handler prints for a line; it has to return `expectedResult` and the channel's buffers.
    static std::string run(int (*handler)(int, char**), const std::string& line, int expectedResult = 0);
};

#endif
