// The platform's libraries as the tests of displays and diagnostics see them: what was asked of them, and what they
// answer.

#ifndef TESTS_DIAG_FAKE_PLATFORM_H
#define TESTS_DIAG_FAKE_PLATFORM_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/device.h"

using Bytes = std::vector<std::uint8_t>;

struct Message {
    std::string header; ///< destination, flags and type; of a query also its capacity and time-out
    Bytes body;

    bool operator==(const Message&) const = default;
};

struct FakePlatform {
    std::vector<Message> sent{}; ///< to the daemon
    int channelResult = 0;
    Bytes answer{};
    std::optional<int> answerLength{}; ///< as reported; the answer's own where not given
    std::size_t buffersLeft = 1000;
    std::vector<int> allocated{}; ///< sizes of the channel's buffers
    std::size_t freed = 0;

    char region = '\0';        ///< 0: cannot be read
    std::string regionAsked{}; ///< the last text that the default country was asked for
    std::string interfaceUp{};
    std::vector<std::string> scans{}; ///< interface and buffer size of each background scan
    int scanNeeds = 0;                ///< bytes that a scan's result takes
};

extern FakePlatform fakePlatform;

/// Begins every test with the values above, and with a driver that has no operations.
class FakePlatformTest : public DeviceTest
{
protected:
    FakePlatformTest();

    /// What a line prints; its command has to return `expectedResult` and the channel's buffers.
    static std::string run(const std::string& line, int expectedResult = 0);
};

#endif
