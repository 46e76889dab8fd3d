// The system shell of the simulated device.

#include <cstddef>
#include <cstdio>

extern "C" {

int __real_system(const char* command);

/// Replaces system() in the whole program. `kill` is built into the system shell. So this puts a shell function `kill`,
/// which runs the device's `kill`, before the command.
int __wrap_system(const char* command)
{
    constexpr char kKill[] = "kill() { env kill \"$@\"; }; ";
    char text[4096];
    if (static_cast<std::size_t>(std::snprintf(text, sizeof text, "%s%s", kKill, command)) >= sizeof text)
        return -1;
    return __real_system(text);
}
}
