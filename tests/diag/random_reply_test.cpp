// Whatever the daemon sends: the printers end, and read nothing but the reply.

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <random>
#include <span>
#include <unistd.h>

#include <gtest/gtest.h>

#include "diag/ap_info.h"
#include "diag/radio_info.h"
#include "diag/station_list.h"
#include "diag/vap_list.h"

namespace
{

struct Printer {
    const char* name;
    void (*show)(std::span<const std::uint8_t> reply);
    std::uint32_t capacity;
    std::uint32_t recordLength;
    std::uint32_t denseShare; ///< one in so many replies is random throughout; the others are zero but for some bytes
};

constexpr Printer kPrinters[] = {
    {"ap_info", printApInfo, 2992, 2992, 2},
    {"vap_list", printVapList, 22180, 2772, 2},
    {"station_list", printStationList, 65536, 128, 2},
    {"radio_info", printRadioInfo, 65536, 2064, 2000}, // a random channel range has 32768 channels
};

class RandomReply : public testing::TestWithParam<Printer>
{
protected:
    void SetUp() override
    {
        std::fflush(stdout);
        terminal_ = dup(STDOUT_FILENO);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    void TearDown() override
    {
        std::fflush(stdout);
        dup2(terminal_, STDOUT_FILENO);
        close(terminal_);
    }

private:
    int terminal_ = -1;
};

} // namespace

TEST_P(RandomReply, IsShownWithoutHarm)
{
    const Printer& printer = GetParam();
    std::mt19937 generator(5);
    const auto random = [&] {
        return static_cast<std::uint32_t>(generator());
    };
    for (int i = 0; i < 100000; ++i) {
        // Mostly a record or two, now and then as long as can be.
        const std::uint32_t longest =
            i % 500 == 0 ? printer.capacity : std::min(printer.capacity, std::max(printer.recordLength * 2 + 4, 2048U));
        const std::uint32_t length = random() % (longest + 1);
        // Memory of exactly this length, so that a read beyond it is caught.
        const auto reply = std::make_unique<std::uint8_t[]>(length);
        if (random() % printer.denseShare == 0)
            std::generate_n(reply.get(), length, [&] { return static_cast<std::uint8_t>(random()); });
        else if (length > 0)
            for (std::uint32_t pokes = random() % 64; pokes > 0; --pokes)
                reply[random() % std::min(length, random() % 2 == 0 ? 800U : length)] =
                    static_cast<std::uint8_t>(random());
        printer.show({reply.get(), length});
    }
}

INSTANTIATE_TEST_SUITE_P(Printers, RandomReply, testing::ValuesIn(kPrinters),
                         [](const auto& instance) { return instance.param.name; });
