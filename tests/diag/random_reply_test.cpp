// Whatever the daemon sends: the printers end, and read nothing but the reply.

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <unistd.h>

#include "diag/ap_info.h"
#include "diag/radio_info.h"
#include "diag/station_list.h"
#include "diag/vap_list.h"
#include "tests/diag/record.h"

namespace
{

struct Printer {
    ShowReply show;
    std::uint32_t capacity;
    std::uint32_t recordLength;
    std::uint32_t denseShare; ///< one in so many replies is random throughout; the others are zero but for some bytes
};

constexpr Printer kPrinters[] = {
    {printApInfo, ApInfo::kReplyLength, ApInfo::kReplyLength, 2},
    {printVapList, 22180, sizeof(VapRecord), 2},
    {printStationList, 65536, sizeof(StationRecord), 2},
    {printRadioInfo, 65536, sizeof(RadioRecord), 2000}, // a random channel range has 32768 channels
};

} // namespace

TEST(RandomReply, IsShownWithoutHarm)
{
    std::fflush(stdout);
    const int terminal = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);

    std::mt19937 random(5);
    for (const Printer& printer : kPrinters)
        for (int i = 0; i < 100000; ++i) {
            // Mostly a record or two, now and then as long as can be.
            const std::uint32_t longest =
                i % 500 == 0 ? printer.capacity : std::max(printer.recordLength * 2 + 4, 2048U);
            std::vector<std::uint8_t> reply(random() % (std::min(printer.capacity, longest) + 1));
            if (random() % printer.denseShare == 0)
                std::ranges::generate(reply, [&] { return static_cast<std::uint8_t>(random()); });
            else if (!reply.empty())
                for (auto pokes = random() % 64; pokes > 0; --pokes)
                    reply[random() % std::min<std::size_t>(reply.size(), random() % 2 == 0 ? 800 : reply.size())] =
                        static_cast<std::uint8_t>(random());
            showReply(printer.show, reply);
        }
    std::fflush(stdout);
    dup2(terminal, STDOUT_FILENO);
    close(terminal);
}
