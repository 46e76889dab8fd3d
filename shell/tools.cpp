#include "shell/tools.h"

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>

#include "shell/output.h"
#include "shell/signals.h"
#include "shell/terminal.h"

namespace
{

bool compose(std::span<char> buffer, const char* format, va_list arguments)
{
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    if (static_cast<std::size_t>(length) < buffer.size()) // a negative length becomes a large number
        return true;
    buffer[0] = '\0';
    cli_print("    Error: Command line too long.\n");
    return false;
}

/// Whether Ctrl-C or Ctrl-\ ended the system shell by a signal. The exit status is not examined, because a tool may
/// exit with any value for another reason.
bool endedByInterrupt(int status)
{
    return status != -1 && WIFSIGNALED(status) && (WTERMSIG(status) == SIGINT || WTERMSIG(status) == SIGQUIT);
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
    const int status = std::system(command);
    restoreTerminal();
    if (endedByInterrupt(status))
        noteInterrupt();
    return status;
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
