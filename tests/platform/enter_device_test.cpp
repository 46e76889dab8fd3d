#include "platform/simulation/enter_device.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>

#include "tests/support/device.h"

namespace
{

/// The number of calls of setenv() that succeed before one gets no memory. Negative: all succeed.
int callsBeforeFailure = -1;

void printPaths()
{
    for (char** variable = environ; *variable != nullptr; ++variable)
        if (std::string_view(*variable).starts_with("PATH="))
            std::fprintf(stderr, "%s\n", *variable);
}

} // namespace

extern "C" {

int __real_setenv(const char* name, const char* value, int overwrite);

int __wrap_setenv(const char* name, const char* value, int overwrite)
{
    if (callsBeforeFailure-- != 0)
        return __real_setenv(name, value, overwrite);
    errno = ENOMEM;
    return -1;
}
}

using EnterDeviceTest = DeviceTest;

/// The device has no tools: the program looks for them only after it has set the variables.
TEST_F(EnterDeviceTest, SetsWhatKeepsAProcessOnItsDeviceOrEndsIt)
{
    const auto enter = [root = "CLI_SIM_ROOT=" + path("")](int calls) {
        std::string own = root, first = "PATH=/first", second = "PATH=/second";
        char* variables[] = {first.data(), own.data(), second.data(), nullptr};
        environ = variables;
        callsBeforeFailure = calls;
        std::atexit(printPaths);
        enterDevice("cli");
    };
    const auto failure = testing::ExitedWithCode(EXIT_FAILURE);
    EXPECT_EXIT(enter(0), failure, "^cli: cannot set PATH, [^\n]*: Cannot allocate memory.\n$");
    EXPECT_EXIT(enter(1), failure, "^cli: cannot set CLI_SIM_ROOT, [^\n]*: Cannot allocate memory.\n");
    EXPECT_EXIT(enter(2), failure, "^cli: [^\n]* has no tools[^\n]*\nPATH=" + path("/bin:") + path("/usr/bin\n$"));
}
