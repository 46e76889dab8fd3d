// device_tool NAME [WORD...]: runs the simulated tool NAME. The scripts in the device's "bin" call this program.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/simulation/enter_device.h"
#include "platform/simulation/stand_ins/stand_in.h"

namespace
{

struct StandIn {
    std::string_view name;
    void (*run)(Words words);
};

constexpr StandIn kStandIns[] = {
    {"brctl", brctl},
    {"ifconfig", ifconfig},
    {"ip", ip},
    {"iwconfig", iwconfig},
    {"iwpriv", iwpriv},
    {"mac", printMac},
    {"up", endUnlessUp},
    {"interfaces", printInterfaces},
    {"reaches", endUnlessReached},
};

const char* toolName = "device_tool";

} // namespace

void fail(const char* format, ...)
{
    va_list arguments;
    std::fflush(stdout);
    std::fprintf(stderr, "%s: ", toolName);
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
    std::exit(EXIT_FAILURE);
}

int main(int argc, char** argv)
{
    const std::span words(argv, static_cast<std::size_t>(argc));
    if (argc < 2)
        fail("the name of a tool is missing");
    for (const StandIn& standIn : kStandIns) {
        if (standIn.name == words[1]) {
            toolName = words[1];
            enterDevice(toolName);
            standIn.run(words.subspan(2));
            return EXIT_SUCCESS;
        }
    }
    fail("%s is not known", words[1]);
}
