#include "cli/external.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "cli/output.h"
#include "platform/device_file.h"

namespace
{

bool compose(std::span<char> buffer, const char* format, va_list arguments)
{
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    if (length >= 0 && static_cast<std::size_t>(length) < buffer.size())
        return true;
    buffer[0] = '\0';
    cli_print("    Error: Command line too long.\n");
    return false;
}

} // namespace

bool composeCommand(std::span<char> buffer, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const bool fits = compose(buffer, format, arguments);
    va_end(arguments);
    return fits;
}

int runCommand(const char* command)
{
    std::fflush(stdout);
    return std::system(command);
}

int runCommandf(const char* format, ...)
{
    char command[kCommandLength + 1];
    va_list arguments;
    va_start(arguments, format);
    const bool fits = compose(command, format, arguments);
    va_end(arguments);
    return fits ? runCommand(command) : -1;
}

void runShellCommand(const char* command)
{
    if (!pipeIsActive()) {
        runCommand(command);
        return;
    }
    flushPipe();
    runCommandf("%s >> %s", command, DeviceFile(kPipeFile).path());
}
