// Targets of binary records: the daemon's replies, firewall rules, and the flash partition.

#include "tests/fuzz/fuzz.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>

#include "diag/ap_info.h"
#include "diag/exchange.h"
#include "diag/firewall_rule.h"
#include "diag/radio_info.h"
#include "diag/station_list.h"
#include "diag/vap_list.h"
#include "platform/flash_layout.h"
#include "shell/executor.h"

namespace
{

/// The first byte selects the printer. The memory of the reply ends with its last byte.
void printReply(std::string_view input)
{
    constexpr ReplyPrinter kPrinters[] = {printApInfo, printVapList, printStationList, printRadioInfo};
    const ReplyPrinter print = kPrinters[takeByte(input) % std::size(kPrinters)];
    const auto reply = std::make_unique<std::uint8_t[]>(input.size());
    std::ranges::copy(input, reply.get());
    print({reply.get(), input.size()});
}

template <typename Rule>
void formatRule(char* (*format)(const Rule*, int, char*, std::size_t), std::string_view input)
{
    const unsigned kind = takeByte(input);
    const unsigned size = takeByte(input) + 1;
    Rule rule{};
    std::memcpy(&rule, input.data(), std::min(sizeof rule, input.size()));
    const auto line = std::make_unique<char[]>(size);
    std::memset(line.get(), 'x', size);
    format(kind >= 8 ? &rule : nullptr, static_cast<int>(kind), line.get(), size);
    require(line[size - 1] == '\0', "the line of a rule is terminated");
}

/// The first byte selects the kind of address, the second the line, the third the size of the buffer.
void formatRules(std::string_view input)
{
    if (takeByte(input) % 2 == 0)
        formatRule(firewallFormatRule4, input);
    else
        formatRule(firewallFormatRule6, input);
}

/// Up to a zero: the text of "/proc/mtd". Up to the next zero: lines with `bios` commands. Then: the last bytes of the
/// image.
void useFlash(std::string_view input)
{
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string_view partitions = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    const std::string_view commands = input.substr(0, input.find('\0'));
    input.remove_prefix(std::min(commands.size() + 1, input.size()));

    std::string image(sizeof(FlashImage), '\0');
    const std::size_t count = std::min(input.size(), sizeof(FlashImage) - offsetof(FlashImage, mac));
    std::ranges::copy(input.substr(0, count), image.end() - static_cast<std::ptrdiff_t>(count));
    writeFile("/proc/mtd", partitions);
    writeFile("/dev/mtdblock0", image);
    writeFile("/dev/mtd0", "\n");
    for (const std::string& line : linesOf(commands, 4))
        executeLine(("bios " + line).c_str());
}

constexpr FuzzTarget kTargets[] = {
    {"replies", printReply, false},
    {"rules", formatRules, false},
    {"flash", useFlash, false},
};

} // namespace

const std::span<const FuzzTarget> kRecordTargets = kTargets;
