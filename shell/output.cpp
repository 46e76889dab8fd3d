#include "shell/output.h"

#include <cstdarg>
#include <cstdio>

#include "shell/pipe.h"
#include "shell/signals.h"

namespace
{

constinit char message[kMessageSize]{};

} // namespace

void cli_print(const char* text)
{
    if (isInterrupted())
        return;
    if (pipeIsActive())
        appendToPipe(text);
    else
        std::fputs(text, stdout);
}

int cli_printf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    cli_print(message);
    constexpr int kLongest = static_cast<int>(kMessageSize) - 1;
    return length < kLongest ? length : kLongest;
}
